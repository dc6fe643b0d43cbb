// Growable arrays for what can become large: the bytes of a file, the records of a track.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace boreforge {

// Memory for a large array. From the size of a huge page on, whole huge pages are asked for: the first touch
// of fresh memory costs more than what is then done with it, and a huge page is touched once for 512 small
// ones. Where the system has none, small ones serve. Throws std::bad_alloc where the system has no more.
void* AllocateLarge(std::size_t bytes);
// `bytes` as it was allocated.
void FreeLarge(void* place, std::size_t bytes) noexcept;

// The allocator of large arrays. It leaves a new element as its default initialisation does, so that plain
// numbers aren't set to zero: such arrays are filled by a read at once, and setting them first would touch
// all of their memory twice.
template <class T>
struct LargeAllocator {
    using value_type = T;
    LargeAllocator() = default;
    template <class U>
    LargeAllocator(const LargeAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > static_cast<std::size_t>(PTRDIFF_MAX) / sizeof(T)) throw std::bad_alloc();
        return static_cast<T*>(AllocateLarge(count * sizeof(T)));
    }
    void deallocate(T* place, std::size_t count) noexcept { FreeLarge(place, count * sizeof(T)); }

    template <class U>
    void construct(U* place) noexcept {
        ::new (static_cast<void*>(place)) U;
    }
    template <class U, class... Arguments>
    void construct(U* place, Arguments&&... arguments) {
        ::new (static_cast<void*>(place)) U(std::forward<Arguments>(arguments)...);
    }
    friend bool operator==(LargeAllocator, LargeAllocator) { return true; }
};

template <class T>
using LargeArray = std::vector<T, LargeAllocator<T>>;

using Bytes = LargeArray<std::uint8_t>;

}  // namespace boreforge
