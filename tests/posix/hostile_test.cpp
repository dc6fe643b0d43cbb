// Files from strangers: whatever their numbers say, the size of the file limits the time and the memory, and
// each ends in a clear result.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <new>
#include <set>

#include "editor/TunnelShape.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "support/CoreTest.h"
#include "support/KnownTrack.h"
#include "support/Sanitizers.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

const std::string kRefused = "Invalid Track File!", kNoPath = "Can't Be Followed!",
                  kNoTunnels = "does not have any tunnels!", kMade = "made";
const std::set<std::string> kOutcomes = {kMade, kRefused, kNoPath, kNoTunnels};

class HostileTest : public CoreTest {
  protected:
    const std::string track = In("t.zrtrack");

    // What happens when the track is opened and its tunnel made: one of the outcomes above, or the message.
    std::string ResultOf(const Bytes& file) {
        WriteBytes(track, file);
        const TunnelJobSettings settings = DeriveJobSettings({}, In("o.3ds"));
        const Outcome made = OpenTrack(track).Then([&] { return RunTunnelJob(settings); });
        if (made) return kMade;
        EXPECT_EQ(ReadBytes(track), file);
        for (const std::string& known : {kRefused, kNoPath, kNoTunnels})
            if (TextOf(made).find(known) != std::string::npos) return known;
        return TextOf(made);
    }
    // Runs `work` in a process that gets no more than so many MB of addresses and a minute of the processor.
    void Bounded(rlim_t megabytes, const std::function<void()>& work) {
        const pid_t child = ::fork();
        if (child == 0) {
            const struct rlimit memory { megabytes << 20, megabytes << 20 }, seconds{60, 60};
            bool good = ::setrlimit(RLIMIT_CPU, &seconds) == 0;
            if (!kSanitized) good = good && ::setrlimit(RLIMIT_AS, &memory) == 0;
            fileCalls.flush = [](int) { return 0; };
            work();
            ::_exit(good && !HasFailure() ? 0 : 1);
        }
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
};

TEST_F(HostileTest, EveryCountAndLengthOfAFullFileIsBoundedByTheFile) {
    enum class FieldKind { Size, Count, TextLength };
    Bounded(512, [&] {
        // The known file with a path that can be followed: four nodes more.
        const KnownTrack known = MakeKnownTrack();
        WriteBytes(track, known.bytes);
        ASSERT_TRUE(ReadTrackFile(track));
        const auto nodes = WindingCircuit();
        TrackFile.BezierNodes.assign(nodes.begin(), nodes.end());
        MakePresetShape(kPresetBox);
        ASSERT_TRUE(WriteTrackFile(track));
        const Bytes full = ReadBytes(track);
        ASSERT_EQ(ResultOf(full), kMade);
        const std::size_t inserted = full.size() - known.bytes.size();
        const struct {
            FieldKind kind;
            std::vector<std::size_t> offsets;
        } fields[] = {{FieldKind::Size, known.sizes},
                      {FieldKind::Count, known.counts},
                      {FieldKind::TextLength, known.textLengths}};
        // After tag, size, reserved bytes and the number of nodes.
        const std::size_t firstNode = known.chunks.at(3) + 28;
        struct rusage before, after;  // of memory
        ::getrusage(RUSAGE_SELF, &before);
        for (const auto& [kind, offsets] : fields) {
            // A text length above this is negative, which is allowed.
            const std::uint32_t largest = kind == FieldKind::TextLength ? 0x7FFFFFFF : 0xFFFFFFFF;
            for (const std::size_t offset : offsets) {
                const std::size_t at = offset + (offset < firstNode ? 0 : inserted);
                const auto plusOne = static_cast<std::uint32_t>(full[at + 3] + 1);
                for (const std::uint32_t value :
                     {0u, 1u, plusOne, 2'000'000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
                    SCOPED_TRACE(std::to_string(value) + " at " + std::to_string(at));
                    Bytes file = full;
                    Put32(file, at, value);
                    const std::string outcome = ResultOf(file);
                    EXPECT_TRUE(kOutcomes.contains(outcome)) << outcome;
                    if (kind == FieldKind::Size) {
                        EXPECT_EQ(outcome, kMade);
                    } else if (value > 0xFFFF && value <= largest) {
                        EXPECT_EQ(outcome, kRefused);
                    }
                }
            }
        }
        ::getrusage(RUSAGE_SELF, &after);
        // The address sanitizer keeps freed memory for a while.
        if (!kSanitized) {
            EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 32 * 1024);
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
