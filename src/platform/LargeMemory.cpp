#include "platform/LargeMemory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <new>

namespace boreforge {

namespace {

constexpr std::size_t kHugePage = std::size_t{1} << 21;
constexpr std::size_t kBlock = 16 * kHugePage;  // only what is touched takes memory

std::size_t RoundUp(std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; }

}  // namespace

void LargeMemory::AddBlock(std::size_t atLeast) {
    const std::size_t size = std::max(kBlock, RoundUp(atLeast, kHugePage));
    if (size < atLeast) throw std::bad_alloc();
    blocks_.reserve(blocks_.size() + 1);
    // One huge page more than needed, so that a whole number of them can be cut out at their own alignment.
    void* const raw = ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (raw == MAP_FAILED) throw std::bad_alloc();
    auto* const first = static_cast<std::byte*>(raw);
    const auto address = reinterpret_cast<std::uintptr_t>(raw);
    std::byte* const start = first + (RoundUp(address, kHugePage) - address);
    if (start > first) ::munmap(first, static_cast<std::size_t>(start - first));
    const auto tail = static_cast<std::size_t>(first + size + kHugePage - (start + size));
    if (tail > 0) ::munmap(start + size, tail);
    ::madvise(start, size, MADV_HUGEPAGE);  // where there are none, small pages serve
    blocks_.push_back({start, size});
    next_ = start;
    room_ = size;
}

void* LargeMemory::do_allocate(std::size_t bytes, std::size_t alignment) {
    std::size_t padding =
        RoundUp(reinterpret_cast<std::uintptr_t>(next_), alignment) - reinterpret_cast<std::uintptr_t>(next_);
    if (room_ < bytes || room_ - bytes < padding) {
        AddBlock(bytes);
        padding = 0;
    }
    std::byte* const place = next_ + padding;
    next_ += padding + bytes;
    room_ -= padding + bytes;
    return place;
}

void LargeMemory::Release() {
    for (const Block& block : blocks_)
        ::munmap(block.start, block.size);
    blocks_.clear();
    next_ = nullptr;
    room_ = 0;
}

}  // namespace boreforge
