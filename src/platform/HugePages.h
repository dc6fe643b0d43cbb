// Memory for what can become large: the model, the trace, the bytes of a file, the records of a track.
#pragma once

#include <cstddef>
#include <memory_resource>

namespace boreforge {

// Allocates whole huge pages from the system. The first touch of fresh memory costs more than what is then
// done with it, and a huge page is touched once where 512 small pages are touched one by one. Where the
// system has no huge pages, small ones serve. Less than a huge page comes from the heap.
std::pmr::memory_resource* HugePages();

inline constexpr std::size_t kHugePage = std::size_t{1} << 21;

// From the system and back to it: `size` bytes, a multiple of kHugePage. Throws std::bad_alloc.
void* MapPages(std::size_t size);
void UnmapPages(void* pages, std::size_t size);

}  // namespace boreforge
