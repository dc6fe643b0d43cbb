#include "platform/HugePages.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace boreforge {

namespace {

constexpr std::size_t kMaxAlignment = 4096;  // that of small pages

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

class HugePageResource final : public std::pmr::memory_resource {
    static bool IsSmall(std::size_t bytes, std::size_t alignment) {
        return bytes < kHugePage || alignment > kMaxAlignment;
    }

    // From the system, not from the heap, which would reuse memory that it has cut into small pages.
    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        if (IsSmall(bytes, alignment)) return std::pmr::new_delete_resource()->allocate(bytes, alignment);
        if (bytes > static_cast<std::size_t>(PTRDIFF_MAX)) throw std::bad_alloc();
        return MapPages(WholePages(bytes));
    }

    void do_deallocate(void* place, std::size_t bytes, std::size_t alignment) override {
        if (IsSmall(bytes, alignment))
            std::pmr::new_delete_resource()->deallocate(place, bytes, alignment);
        else
            UnmapPages(place, WholePages(bytes));
    }

    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }
};

}  // namespace

std::pmr::memory_resource* HugePages() {
    static HugePageResource pages;
    return &pages;
}

}  // namespace boreforge
