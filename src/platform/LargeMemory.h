// Memory for the large arrays of a job.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

namespace boreforge {

// Hands out memory from large blocks and takes it back all at once.
class LargeMemory : public std::pmr::memory_resource {
  public:
    LargeMemory() = default;
    LargeMemory(const LargeMemory&) = delete;
    LargeMemory& operator=(const LargeMemory&) = delete;
    ~LargeMemory() override { Release(); }

    // Gives all blocks back to the system. Nothing that was allocated here may be in use.
    void Release();

  private:
    struct Block {
        std::byte* start;
        std::size_t size;
    };

    // Throws std::bad_alloc where the system has no more.
    void* do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    void AddBlock(std::size_t atLeast);

    std::vector<Block> blocks_;
    std::byte* next_ = nullptr;
    std::size_t room_ = 0;
};

}  // namespace boreforge
