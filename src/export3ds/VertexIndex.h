// Finds a vertex among those of one object in constant time on average.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tracing/mMath3D.h"

namespace boreforge {

// An open-addressed table from a point to the index of the vertex stored last among those equal to it. Points
// are equal when their coordinates are equal numbers: 0 and -0 are, a NaN equals nothing. The table holds
// indices only; the points stay with the caller.
class VertexIndex {
  public:
    VertexIndex() : slots_(kSlots, kFree) {}

    // Forgets all vertices.
    void Clear() {
        for (const std::uint16_t slot : used_)
            slots_[slot] = kFree;
        used_.clear();
    }

    // The index of the vertex that is equal to `point`, or -1.
    std::int32_t Find(std::span<const Vector3D> points, const Vector3D& point) const {
        const std::uint16_t vertex = slots_[SlotOf(points, point)];
        return vertex == kFree ? -1 : vertex;
    }

    // Stores the vertex points[index]; from now on it is the one that is found. Returns false when an equal
    // one was stored before. At most kMaxVertices are stored between two calls of Clear.
    bool Store(std::span<const Vector3D> points, std::size_t index) {
        const Vector3D& point = points[index];
        if (HasNaN(point)) return true;  // equals nothing
        const std::uint16_t slot = SlotOf(points, point);
        const bool isNew = slots_[slot] == kFree;
        if (isNew) used_.push_back(slot);
        slots_[slot] = static_cast<std::uint16_t>(index);
        return isNew;
    }

    // Three vertices for each of a mesh's 10,000 faces.
    static constexpr std::size_t kMaxVertices = 30000;

  private:
    static constexpr std::uint16_t kFree = 0xFFFF;
    static constexpr std::size_t kSlots = std::size_t{1} << 16;  // never more than half full

    // The slot of the vertex that is equal to `point`, or a free one.
    std::uint16_t SlotOf(std::span<const Vector3D> points, const Vector3D& point) const {
        std::uint16_t slot = HashOf(point);
        while (slots_[slot] != kFree && !(points[slots_[slot]] == point))
            ++slot;  // after the last slot comes the first
        return slot;
    }

    static std::uint16_t HashOf(const Vector3D& point) {
        // Adding 0 turns -0 into 0, so that equal points have equal bits.
        const std::uint64_t x = std::bit_cast<std::uint32_t>(point.x + 0.0f);
        const std::uint64_t y = std::bit_cast<std::uint32_t>(point.y + 0.0f);
        const std::uint64_t z = std::bit_cast<std::uint32_t>(point.z + 0.0f);
        std::uint64_t hash = (x | y << 32) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ hash >> 32 ^ z) * 0xD6E8FEB86659FD93u;
        return static_cast<std::uint16_t>(hash >> 48);
    }

    std::vector<std::uint16_t> slots_, used_;
};

}  // namespace boreforge
