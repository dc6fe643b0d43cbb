// A growable array of bytes whose new elements are not set to zero when it grows: buffers here are always
// filled by a read or a write at once, and setting them first would touch all of that memory twice.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace boreforge {

template <class T>
struct UninitializedAllocator : std::allocator<T> {
    template <class U>
    struct rebind {
        using other = UninitializedAllocator<U>;
    };
    template <class U>
    void construct(U* place) noexcept {
        ::new (static_cast<void*>(place)) U;
    }
    template <class U, class... Arguments>
    void construct(U* place, Arguments&&... arguments) {
        ::new (static_cast<void*>(place)) U(std::forward<Arguments>(arguments)...);
    }
};

using Bytes = std::vector<std::uint8_t, UninitializedAllocator<std::uint8_t>>;

}  // namespace boreforge
