// Files from strangers: whatever their numbers say, the size of the file limits the time and the memory.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <new>

#include "job/mMain.h"
#include "support/CoreTest.h"
#include "support/KnownTrack.h"
#include "support/Sanitizers.h"
#include "tracing/mZR_TraceTrack.h"

namespace boreforge {

using HostileTest = CoreTest;

// Runs `work` in a process that gets no more than so many MB of addresses and a minute of the processor.
void Bounded(rlim_t megabytes, const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit seconds{60, 60}, memory{megabytes << 20, megabytes << 20};
        EXPECT_EQ(::setrlimit(RLIMIT_CPU, &seconds), 0);
        if (!kSanitized) {
            EXPECT_EQ(::setrlimit(RLIMIT_AS, &memory), 0);
        }
        work();
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(HostileTest, EveryCountAndLengthIsBoundedByTheFile) {
    const std::string track = In("t.zrtrack"), noMemory = SystemFailure(ENOMEM).reason;
    const KnownTrack known = MakeKnownTrack();
    const struct {
        const char* kind;
        std::vector<std::size_t> offsets;
        std::uint32_t value;
        bool opens;
    } cases[] = {{"size", known.sizes, 0, true},  // which a reader ignores
                 {"size", known.sizes, 0x7FFFFFFF, true},
                 {"size", known.sizes, 0xFFFFFFFF, true},
                 {"count", known.counts, 2'000'000, false},
                 {"count", known.counts, 0x7FFFFFFF, false},
                 {"count", known.counts, 0x80000000, false},
                 {"count", known.counts, 0xFFFFFFFF, false},
                 {"length of a text", known.textLengths, 2'000'000, false},
                 {"length of a text", known.textLengths, 0x7FFFFFFF, false}};
    Bounded(100, [&] {
        for (const auto& row : cases)
            for (const std::size_t offset : row.offsets) {
                Bytes file = known.bytes;
                Put32(file, offset, row.value);
                WriteBytes(track, file);
                SCOPED_TRACE(testing::Message() << row.kind << ' ' << row.value << " at " << offset);
                const Outcome opened = OpenTrack(track);
                EXPECT_EQ(bool(opened), row.opens);
                EXPECT_FALSE(TextOf(opened).ends_with(noMemory)) << "it took memory for what isn't there";
            }
    });
}

TEST_F(HostileTest, ATraceThatRunsOutOfMemoryLeavesNoTrace) {
    if (kSanitized) GTEST_SKIP() << "the sanitizer's memory has no limit";
    Bounded(256, [] {
        MakeTrack(WindingCircuit());
        ASSERT_TRUE(TraceTrack());
        for (std::size_t i = 0; i < 6; ++i)  // 999,000 units of path: samples of 280 MB
            TrackFile.BezierNodes[i] = Node({i % 2 == 0 ? 0 : 166'500.0f, 0, 0}, {}, {});
        EXPECT_THROW((void)TraceTrack(), std::bad_alloc);
        EXPECT_FALSE(TrackTraced);
        EXPECT_TRUE(TracedSegments.empty());
    });
}

}  // namespace boreforge
