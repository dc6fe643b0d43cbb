#include <sys/mman.h>

#include <cstdint>
#include <new>

#include "platform/HugePages.h"

namespace boreforge {

void* MapPages(std::size_t size) {
    // One huge page more than needed, so that the rest can be cut off at both ends of aligned pages.
    void* const raw =
        ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED) throw std::bad_alloc();
    const auto address = reinterpret_cast<std::uintptr_t>(raw);
    const std::size_t before = (kHugePage - address % kHugePage) % kHugePage;
    std::byte* const place = static_cast<std::byte*>(raw) + before;
    if (before > 0) (void)::munmap(raw, before);
    if (before < kHugePage) (void)::munmap(place + size, kHugePage - before);
    (void)::madvise(place, size, MADV_HUGEPAGE);
    return place;
}

void UnmapPages(void* pages, std::size_t size) { (void)::munmap(pages, size); }

}  // namespace boreforge
