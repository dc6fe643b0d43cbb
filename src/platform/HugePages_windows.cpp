#include <windows.h>

#include <new>

#include "platform/HugePages.h"

namespace boreforge {

// Huge pages would need a privilege that users don't have.
void* MapPages(std::size_t size) {
    void* const pages = ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!pages) throw std::bad_alloc();
    return pages;
}

void UnmapPages(void* pages, std::size_t) { (void)::VirtualFree(pages, 0, MEM_RELEASE); }

}  // namespace boreforge
