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

    // The place of a point in the table: where the vertex equal to it is entered, or would be.
    using Place = std::uint32_t;
    Place PlaceOf(const std::vector<Vector3D>& points, const Vector3D& point) const {
        return PlaceFrom(HashOf(point), points, point);
    }

    // The index of the vertex at a place, or -1.
    std::int32_t VertexAt(Place place) const {
        return IsUsed(slots_[place]) ? static_cast<std::int32_t>(slots_[place] & kIndexMask) : -1;
    }

    // What became of a vertex that was entered: the first of its coordinates, the successor of an equal one,
    // or one that can never be found, as a NaN equals nothing.
    enum class Entry { First, Successor, Unfindable };

    // Enters the vertex points[index]; from now on it is the one that is found. `place` is that of its point,
    // taken since the last call of Clear. At most kMostVertices are entered between two calls of Clear.
    Entry Enter(const std::vector<Vector3D>& points, std::int32_t index, Place place) {
        const Vector3D& point = points[static_cast<std::size_t>(index)];
        if (std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z)) return Entry::Unfindable;
        // Another vertex may have taken the place in the meantime; none is ever given back.
        std::uint32_t& slot = slots_[PlaceFrom(place, points, point)];
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
    static constexpr std::uint32_t kSlots = std::uint32_t{1} << 16;  // less than half full at most

    bool IsUsed(std::uint32_t slot) const { return slot >> kIndexBits == generation_; }

    static Place HashOf(const Vector3D& point) {
        // Adding 0 turns -0 into 0, so that equal points have equal bits.
        const std::uint64_t x = std::bit_cast<std::uint32_t>(point.x + 0.0f);
        const std::uint64_t y = std::bit_cast<std::uint32_t>(point.y + 0.0f);
        const std::uint64_t z = std::bit_cast<std::uint32_t>(point.z + 0.0f);
        std::uint64_t hash = (x | y << 32) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ hash >> 32 ^ z) * 0xD6E8FEB86659FD93u;
        return static_cast<Place>(hash >> 48);
    }

    Place PlaceFrom(Place at, const std::vector<Vector3D>& points, const Vector3D& point) const {
        while (IsUsed(slots_[at]) && !(points[slots_[at] & kIndexMask] == point))
            at = (at + 1) % kSlots;
        return at;
    }

    std::vector<std::uint32_t> slots_;
    std::uint32_t generation_ = 1;
};

}  // namespace boreforge
