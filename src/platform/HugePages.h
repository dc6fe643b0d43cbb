// Memory for what can become large: the model, the trace, the bytes of a file, the records of a track.
#pragma once

#include <memory_resource>

namespace boreforge {

// Allocates whole huge pages from the system. The first touch of fresh memory costs more than what is then
// done with it, and a huge page is touched once where 512 small pages are touched one by one. Where the
// system has no huge pages, small ones serve. Less than a huge page comes from the heap.
std::pmr::memory_resource* HugePages();

}  // namespace boreforge
