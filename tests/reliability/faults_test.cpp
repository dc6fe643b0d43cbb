// Each call that reaches the disk fails once: the old file or the new one is there, whole.
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "platform/OutputFile.h"
#include "support/CoreTest.h"
#include "support/FailingCalls.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

class FaultsTest : public CoreTest {
  protected:
    FaultsTest() {
        fs::create_directory(In("d"));
        MakeTrack(WindingCircuit(), "-TT---");
    }
    // Prepares and runs `work` once for each call that it makes, which then fails, and once without a
    // failure; `check` gets each result. No file stays open.
    void WithEachCallFailing(const std::function<void()>& prepare, const std::function<Outcome()>& work,
                             const std::function<void(bool)>& check) {
        const int before = NextFileNumber();
        bool failed = true;
        for (int which = 0; failed; ++which) {
            SCOPED_TRACE(which);
            prepare();
            FailOneCall(which);
            const Outcome result = work();
            failed = CallHasFailed();
            fileCalls = SystemFileCalls();
            EXPECT_EQ(TextOf(result).empty(), bool(result)) << "a failure has words";
            check(bool(result));
            if (!failed) {
                EXPECT_TRUE(result) << "the work failed by itself";
            }
        }
        EXPECT_EQ(NextFileNumber(), before);
    }
    // The system gives the smallest free one, so it grows when a file stays open.
    int NextFileNumber() const { return OpenFile(fileCalls.open(In("d").c_str(), OpenFor::Folder)).Get(); }
    std::size_t FilesInFolder() const { return std::distance(fs::directory_iterator(In("d")), {}); }

    const std::string track = In("d/t.zrtrack"), shape = In("d/s.zrbf"), object = In("d/o.3ds");
};

// The bytes of a file; nothing if there is none.
using Content = std::optional<Bytes>;
Content ContentOf(const std::string& path) { return fs::exists(path) ? Content(ReadBytes(path)) : Content(); }

TEST_F(FaultsTest, AShapeThatCantBeSavedIsTheOldOneOrNone) {
    MakePresetShape(kPresetBox);
    ASSERT_TRUE(SaveTunnelShape(shape));
    const Bytes made = ReadBytes(shape);
    for (const Content& old : {Content(), Content(Bytes(made.begin(), made.begin() + 50))}) {
        const auto prepare = [&] {
            fs::remove(shape);
            if (old) WriteBytes(shape, *old);
        };
        const auto check = [&](bool good) {
            EXPECT_EQ(ContentOf(shape), good ? made : old);
            EXPECT_EQ(FilesInFolder(), fs::exists(shape) ? 1u : 0u);
        };
        WithEachCallFailing(
            prepare, [&] { return SaveTunnelShape(shape); }, check);
    }
}

TEST_F(FaultsTest, AJobThatFailsLeavesWholeFiles) {
    const TunnelJobSettings settings = DeriveJobSettings({}, object);
    MakeLargeShape();
    ASSERT_TRUE(WriteTrackFile(track));
    const Bytes oldTrack = ReadBytes(track);
    ASSERT_TRUE(OpenTrack(track));
    ASSERT_TRUE(RunTunnelJob(settings));
    const Bytes newTrack = ReadBytes(track), newObject = ReadBytes(object);
    ASSERT_GT(newObject.size(), OutputFile::kBufferSize);
    for (const Content& oldObject : {Content(), Content(Bytes(100, 'o'))}) {
        const auto prepare = [&] {
            fs::remove(object);
            if (oldObject) WriteBytes(object, *oldObject);
            WriteBytes(track, oldTrack);
            EXPECT_TRUE(OpenTrack(track));
        };
        const auto check = [&](bool good) {
            EXPECT_EQ(ReadBytes(track), good ? newTrack : oldTrack);
            // The object is put in its place first, so a job that fails later leaves the new one.
            const Content now = ContentOf(object);
            const bool isNew = good || now == newObject;
            EXPECT_EQ(now, isNew ? newObject : oldObject);
            EXPECT_EQ(FilesInFolder(), now ? 2u : 1u);
        };
        WithEachCallFailing(
            prepare, [&] { return RunTunnelJob(settings); }, check);
    }
}

TEST_F(FaultsTest, AFileThatShrinksWhileItIsReadIsRefused) {
    static std::string shrinking;
    shrinking = track;
    ASSERT_TRUE(WriteTrackFile(track));
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = SystemFileCalls().inspect(file, info);
        fs::resize_file(shrinking, static_cast<std::uintmax_t>(info->size) - 1);
        return result;
    };
    EXPECT_TRUE(Contains(TextOf(OpenTrack(track)), "It was being changed while it was read."));
}

}  // namespace boreforge
