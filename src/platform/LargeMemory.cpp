#include "platform/LargeMemory.h"

#include <algorithm>
#include <cstdint>

#include "base/LargeArray.h"

namespace boreforge {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 25;  // only what is touched takes memory

std::size_t RoundUp(std::size_t value, std::size_t unit) { return (value + unit - 1) / unit * unit; }

}  // namespace

void LargeMemory::AddBlock(std::size_t atLeast) {
    const std::size_t size = std::max(kBlock, atLeast);
    blocks_.reserve(blocks_.size() + 1);
    next_ = static_cast<std::byte*>(AllocateLarge(size));
    blocks_.push_back({next_, size});
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
        FreeLarge(block.start, block.size);
    blocks_.clear();
    next_ = nullptr;
    room_ = 0;
}

}  // namespace boreforge
