#include "base/LargeArray.h"

#include <sys/mman.h>

namespace boreforge {

namespace {

constexpr std::size_t kHugePage = std::size_t{1} << 21;

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

}  // namespace

void* AllocateLarge(std::size_t bytes) {
    if (bytes < kHugePage) return ::operator new(bytes);
    void* const place = ::operator new (WholePages(bytes), std::align_val_t{kHugePage});
    (void)::madvise(place, WholePages(bytes), MADV_HUGEPAGE);
    return place;
}

void FreeLarge(void* place, std::size_t bytes) noexcept {
    if (bytes < kHugePage)
        ::operator delete(place);
    else
        ::operator delete (place, std::align_val_t{kHugePage});
}

}  // namespace boreforge
