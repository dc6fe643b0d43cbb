// Files from strangers: whatever their numbers say, the size of the file limits the time and the memory.
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <new>

#include "job/mMain.h"
#include "support/CoreTest.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

using HostileTest = CoreTest;

// The address sanitizer reserves terabytes of addresses, so no limit can be set on them.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

// Does `work` with no more than so many MB of addresses and a minute of the processor, and ends the process.
[[noreturn]] void Bounded(rlim_t megabytes, const std::function<void()>& work) {
    const rlimit seconds{60, 60}, memory{megabytes << 20, megabytes << 20};
    EXPECT_EQ(::setrlimit(RLIMIT_CPU, &seconds), 0);
    if (!kSanitized) {
        EXPECT_EQ(::setrlimit(RLIMIT_AS, &memory), 0);
    }
    work();
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST_F(HostileTest, NoNumberInATrackTakesMemoryForWhatIsNotThere) {
    const std::string track = In("t.zrtrack"), noMemory = SystemFailure(ENOMEM).reason;
    const Bytes full = ReadBytes(kFullTrack);
    const auto work = [&] {
        for (const std::uint32_t value : {2'000'000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
            for (std::size_t offset = 0; offset + 4 <= full.size(); ++offset) {
                Bytes file = full;
                Put32(file, offset, value);
                std::filesystem::remove(track);  // ext4 flushes a file that is emptied and written again
                WriteBytes(track, file);
                EXPECT_FALSE(TextOf(OpenTrack(track)).ends_with(noMemory)) << value << " at " << offset;
            }
    };
    EXPECT_EXIT(Bounded(100, work), testing::ExitedWithCode(0), "");
}

TEST_F(HostileTest, ATraceThatRunsOutOfMemoryLeavesNoTrace) {
    if (kSanitized) GTEST_SKIP() << "the sanitizer's memory has no limit";
    const auto work = [] {
        MakeTrack(WindingCircuit());
        ASSERT_TRUE(TraceTrack());
        for (std::size_t i = 0; i < 6; ++i)  // 999,000 units of path: samples of 280 MB
            TrackFile.BezierNodes[i] = Node({i % 2 == 0 ? 0 : 166'500.0f, 0, 0}, {}, {});
        EXPECT_THROW((void)TraceTrack(), std::bad_alloc);
        EXPECT_FALSE(TrackTraced);
        EXPECT_TRUE(TracedSegments.empty());
    };
    EXPECT_EXIT(Bounded(256, work), testing::ExitedWithCode(0), "");
}

}  // namespace boreforge
