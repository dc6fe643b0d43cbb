// Each call that reaches the disk fails once: the old file or the new one is there, whole.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iterator>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "export3ds/Save3DSFile.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "platform/OutputFile.h"
#include "support/CoreTest.h"
#include "support/FailingCalls.h"
#include "support/KnownTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace fs = std::filesystem;

class FaultsTest : public CoreTest {
  protected:
    FaultsTest() {
        fs::create_directory(In("d"));
        MakeTrack(WindingCircuit(), "-TT---");
    }
    ~FaultsTest() override {
        if (faults_ > 0) std::printf("%d calls failed, one at a time\n", faults_);
    }

    // Prepares and runs `work` once for each call that it makes, which then fails, and once without a
    // failure; `check` gets each result. No file stays open.
    void WithEachCallFailing(const std::function<void()>& prepare, const std::function<Outcome()>& work,
                             const std::function<void(bool)>& check) {
        const int before = NextFileNumber();
        for (int which = 0;; ++which) {
            SCOPED_TRACE(which);
            prepare();
            FailOneCall(which);
            const bool good{work()};
            const bool failed = CallHasFailed();
            fileCalls = SystemFileCalls();
            check(good);
            if (!failed) {
                EXPECT_TRUE(good) << "the work failed by itself";
                break;
            }
            ++faults_;
        }
        EXPECT_EQ(NextFileNumber(), before);
    }
    // The system gives the smallest free one, so it grows when a file stays open.
    int NextFileNumber() const { return OpenFile(fileCalls.open(In("d").c_str(), OpenFor::Folder)).Get(); }
    std::size_t FilesInFolder() const { return std::distance(fs::directory_iterator(In("d")), {}); }

    const std::string track = In("d/t.zrtrack"), shape = In("d/s.zrbf"), object = In("d/o.3ds");
    int faults_ = 0;
};

// How a file is saved.
struct SavedFile {
    const char* name;
    std::string path;
    std::function<Outcome()> save;
};

class SavedFileTest : public FaultsTest {
  protected:
    SavedFileTest() {
        MakePresetShape(kPresetBox);
        files_.push_back({"track", track, [&] { return WriteTrackFile(track); }});
        files_.push_back({"shape", shape, [&] { return SaveTunnelShape(shape); }});
        files_.push_back({"object", object, [&] { return Save3DSFile(object); }});
    }
    std::vector<SavedFile> files_;
};

TEST_F(SavedFileTest, FailingToSaveANewFileLeavesNothing) {
    for (const SavedFile& file : files_) {
        SCOPED_TRACE(file.name);
        WithEachCallFailing([&] { fs::remove(file.path); }, file.save,
                            [&](bool good) { EXPECT_EQ(FilesInFolder(), good ? 1u : 0u); });
        fs::remove(file.path);
    }
}

TEST_F(SavedFileTest, FailingToReplaceAFileLeavesTheOldOne) {
    for (const SavedFile& file : files_) {
        SCOPED_TRACE(file.name);
        ASSERT_TRUE(file.save());
        const Bytes made = ReadBytes(file.path);
        const Bytes old(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(made.size() / 2));
        fs::perms rights{};
        const auto writeOld = [&] {
            WriteBytes(file.path, old);
            fs::permissions(file.path, fs::perms(0604));
            rights = fs::status(file.path).permissions();  // Windows knows fewer
        };
        WithEachCallFailing(writeOld, file.save, [&](bool good) {
            EXPECT_EQ(ReadBytes(file.path), good ? made : old);
            EXPECT_EQ(fs::status(file.path).permissions(), rights);
            EXPECT_EQ(FilesInFolder(), 1u);
            EXPECT_TRUE(file.save()) << "the next save works";
        });
        fs::remove(file.path);
    }
}

class JobFaultsTest : public FaultsTest {
  protected:
    JobFaultsTest() {
        MakeLargeShape();
        EXPECT_TRUE(WriteTrackFile(track));
        oldTrack_ = ReadBytes(track);
        EXPECT_TRUE(OpenTrack(track));
        EXPECT_TRUE(RunTunnelJob(settings_));
        newTrack_ = ReadBytes(track);
        newObject_ = ReadBytes(object);
    }
    void OpenOldTrack() {
        WriteBytes(track, oldTrack_);
        EXPECT_TRUE(OpenTrack(track));
    }
    const TunnelJobSettings settings_ = DeriveJobSettings({}, object);
    const Bytes oldObject_ = Bytes(100, 'o');
    Bytes oldTrack_, newTrack_, newObject_;
};

TEST_F(JobFaultsTest, AFailingJobLeavesWholeFilesAndSaysWhy) {
    ASSERT_GT(newObject_.size(), OutputFile::kBufferSize);
    for (const bool hasOldObject : {true, false}) {
        SCOPED_TRACE(hasOldObject);
        const auto prepare = [&] {
            fs::remove(object);
            if (hasOldObject) WriteBytes(object, oldObject_);
            OpenOldTrack();
        };
        const auto check = [&](bool good) {
            EXPECT_EQ(ReadBytes(track), good ? newTrack_ : oldTrack_);
            const bool exists = fs::exists(object);
            EXPECT_TRUE(exists || !(good || hasOldObject));
            const Bytes now = exists ? ReadBytes(object) : newObject_;
            const bool isOld = hasOldObject && !good && now == oldObject_;
            EXPECT_EQ(now, isOld ? oldObject_ : newObject_);
            EXPECT_EQ(FilesInFolder(), exists ? 2u : 1u);
        };
        const auto job = [&] {
            const Outcome made = RunTunnelJob(settings_);
            EXPECT_EQ(TextOf(made).empty(), bool(made)) << "a failure has words";
            return made;
        };
        WithEachCallFailing(prepare, job, check);
    }
    OpenOldTrack();
    EXPECT_TRUE(RunTunnelJob(settings_)) << "the next job works";
}

TEST_F(FaultsTest, AFileThatShrinksWhileItIsReadIsRefused) {
    WriteBytes(track, KnownFile());
    static std::string shrinking;
    shrinking = track;
    fileCalls.inspect = [](int file, FileInfo* info) {
        const int result = SystemFileCalls().inspect(file, info);
        fs::resize_file(shrinking, static_cast<std::uintmax_t>(info->size) - 1);
        return result;
    };
    EXPECT_TRUE(Contains(TextOf(OpenTrack(track)), "It was being changed while it was read."));
}

}  // namespace boreforge
