#include "base/LargeArray.h"

#include <sys/mman.h>

#include <cstddef>
#include <cstdint>

namespace boreforge {

namespace {

constexpr std::size_t kHugePage = std::size_t{1} << 21;

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

}  // namespace

// From the system, not from the heap, which would hand out again what it cut into small pages.
void* AllocateLarge(std::size_t bytes) {
    if (bytes < kHugePage) return ::operator new(bytes);
    if (bytes > static_cast<std::size_t>(PTRDIFF_MAX)) throw std::bad_alloc();
    const std::size_t size = WholePages(bytes);
    // One huge page more than needed, so that a whole number of them can be cut out at their own alignment.
    void* const raw =
        ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED) throw std::bad_alloc();
    auto* const first = static_cast<std::byte*>(raw);
    const std::size_t before =
        WholePages(reinterpret_cast<std::uintptr_t>(raw)) - reinterpret_cast<std::uintptr_t>(raw);
    std::byte* const place = first + before;
    if (before > 0) (void)::munmap(first, before);
    if (before < kHugePage) (void)::munmap(place + size, kHugePage - before);
    (void)::madvise(place, size, MADV_HUGEPAGE);
    return place;
}

void FreeLarge(void* place, std::size_t bytes) noexcept {
    if (bytes < kHugePage)
        ::operator delete(place);
    else
        (void)::munmap(place, WholePages(bytes));
}

}  // namespace boreforge
