// The bytes of a file.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <new>
#include <vector>

#include "platform/HugePages.h"

namespace boreforge {

// An allocator in huge pages for a vector that leaves its new elements uninitialised.
template <class T>
struct UninitializedAllocator : std::pmr::polymorphic_allocator<T> {
    UninitializedAllocator() : std::pmr::polymorphic_allocator<T>(HugePages()) {}
    void construct(T* place) noexcept { ::new (static_cast<void*>(place)) T; }
    template <class Value>
    void construct(T* place, const Value& value) {
        ::new (static_cast<void*>(place)) T(value);
    }
    UninitializedAllocator select_on_container_copy_construction() const { return {}; }
};

// New bytes are filled at once, by a read or a save. Zeroing them first makes the save of a large track take
// twice as long.
using Bytes = std::vector<std::uint8_t, UninitializedAllocator<std::uint8_t>>;

}  // namespace boreforge
