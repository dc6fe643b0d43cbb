// Finds a vertex among those of one object in constant time on average.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// An open-addressed table from a point to the index of the vertex stored last among those equal to it. Points
// are equal when their coordinates are equal numbers: 0 and -0 are, a NaN equals nothing. The table holds
// indices alone; the points stay with the caller. It is emptied by a change of generation, so that the next
// object reuses it without touching its memory.
class VertexIndex {
  public:
    VertexIndex() : slots_(kSlots) {}

    // Forgets all vertices.
    void Clear() {
        if (++generation_ > kLastGeneration) {
            slots_.assign(kSlots, 0);
            generation_ = 1;
        }
    }

    // The index of `point` in `points`, or -1.
    std::int32_t Find(const std::vector<Vector3D>& points, const Vector3D& point) const {
        const std::uint32_t slot = slots_[SlotOf(points, point)];
        return IsUsed(slot) ? static_cast<std::int32_t>(slot & kIndexMask) : -1;
    }

    // What became of a vertex that was entered: the first of its coordinates, the successor of an equal one,
    // or one that can never be found, as a NaN equals nothing.
    enum class Entry { First, Successor, Unfindable };

    // Enters the vertex points[index]; from now on it is the one that is found. At most kMostVertices are
    // entered between two calls of Clear.
    Entry Enter(const std::vector<Vector3D>& points, std::int32_t index) {
        const Vector3D& point = points[static_cast<std::size_t>(index)];
        if (std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z)) return Entry::Unfindable;
        std::uint32_t& slot = slots_[SlotOf(points, point)];
        const Entry entry = IsUsed(slot) ? Entry::Successor : Entry::First;
        slot = generation_ << kIndexBits | static_cast<std::uint32_t>(index);
        return entry;
    }

    // Three vertices for each of an object's 10,000 faces.
    static constexpr std::int32_t kMostVertices = 30000;

  private:
    // A slot is the generation above the index; it is used when the generation is the present one.
    static constexpr int kIndexBits = 16;
    static constexpr std::uint32_t kIndexMask = 0xFFFF;
    static constexpr std::uint32_t kLastGeneration = 0xFFFF;
    static constexpr std::size_t kSlots = std::size_t{1} << 16;  // less than half full at most

    bool IsUsed(std::uint32_t slot) const { return slot >> kIndexBits == generation_; }

    static std::size_t HashOf(const Vector3D& point) {
        // Adding 0 turns -0 into 0, so that equal points have equal bits.
        const std::uint64_t x = std::bit_cast<std::uint32_t>(point.x + 0.0f);
        const std::uint64_t y = std::bit_cast<std::uint32_t>(point.y + 0.0f);
        const std::uint64_t z = std::bit_cast<std::uint32_t>(point.z + 0.0f);
        std::uint64_t hash = (x | y << 32) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ hash >> 32 ^ z) * 0xD6E8FEB86659FD93u;
        return hash >> 48;
    }

    // The slot of a vertex equal to `point`, or the free slot where it belongs.
    std::size_t SlotOf(const std::vector<Vector3D>& points, const Vector3D& point) const {
        std::size_t at = HashOf(point);
        while (IsUsed(slots_[at]) && !(points[slots_[at] & kIndexMask] == point))
            at = (at + 1) % kSlots;
        return at;
    }

    std::vector<std::uint32_t> slots_;
    std::uint32_t generation_ = 1;
};

}  // namespace boreforge
