#include "platform/Signals.h"

#include <fcntl.h>

#include <filesystem>
#include <thread>

#include "support/CoreTest.h"

namespace boreforge {

using SignalsTest = CoreTest;

TEST_F(SignalsTest, ASignalThatAnotherThreadTakesWaitsUntilTheFileIsNoted) {
    const auto endWhileAFileIsMade = [&] {
        RemoveUnfinishedOnSignals();
        std::thread other([] {
            while (true)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
        {
            const BlockedSignals blocked;
            WriteBytes(In("unfinished"), {1});
            ::pthread_kill(other.native_handle(), SIGTERM);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            NoteUnfinished(AT_FDCWD, In("unfinished"));
        }
        other.join();
    };
    EXPECT_EXIT(endWhileAFileIsMade(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_FALSE(std::filesystem::exists(In("unfinished")));
}

}  // namespace boreforge
