#include "platform/HugePages.h"

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <new>

namespace boreforge {

namespace {

constexpr std::size_t kHugePage = std::size_t{1} << 21;

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

class HugePageResource final : public std::pmr::memory_resource {
    static bool IsSmall(std::size_t bytes, std::size_t alignment) {
        return bytes < kHugePage || alignment > kHugePage;
    }

    // From the system, not from the heap, which would reuse memory that it has cut into small pages.
    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        if (IsSmall(bytes, alignment)) return std::pmr::new_delete_resource()->allocate(bytes, alignment);
        if (bytes > static_cast<std::size_t>(PTRDIFF_MAX)) throw std::bad_alloc();
        const std::size_t size = WholePages(bytes);
        // One huge page more than needed, so that the rest can be cut off at both ends of aligned pages.
        void* const raw =
            ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED) throw std::bad_alloc();
        const auto address = reinterpret_cast<std::uintptr_t>(raw);
        const std::size_t before = WholePages(address) - address;
        std::byte* const place = static_cast<std::byte*>(raw) + before;
        if (before > 0) (void)::munmap(raw, before);
        if (before < kHugePage) (void)::munmap(place + size, kHugePage - before);
        (void)::madvise(place, size, MADV_HUGEPAGE);
        return place;
    }

    void do_deallocate(void* place, std::size_t bytes, std::size_t alignment) override {
        if (IsSmall(bytes, alignment))
            std::pmr::new_delete_resource()->deallocate(place, bytes, alignment);
        else
            (void)::munmap(place, WholePages(bytes));
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
