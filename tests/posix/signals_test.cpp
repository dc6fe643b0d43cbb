#include "platform/Signals.h"

#include <fcntl.h>
#include <signal.h>

#include <cstdlib>
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

TEST_F(SignalsTest, EverySignalThatEndsTheProgramRemovesWhatIsUnfinished) {
    for (const int signal :
         {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGALRM, SIGTERM, SIGUSR1, SIGUSR2, SIGXCPU, SIGRTMIN}) {
        WriteBytes(In("one"), {1});
        WriteBytes(In("two"), {1});
        const auto end = [&] {
            RemoveUnfinishedOnSignals();
            NoteUnfinished(AT_FDCWD, In("one"));
            NoteUnfinished(AT_FDCWD, In("two"));
            ::raise(signal);
        };
        EXPECT_EXIT(end(), testing::KilledBySignal(signal), "") << signal;
        EXPECT_TRUE(Listing().empty()) << signal;
    }
}

TEST_F(SignalsTest, AnIgnoredSignalStaysIgnored) {
    const auto ignore = [] {
        (void)::signal(SIGHUP, SIG_IGN);  // as by nohup
        RemoveUnfinishedOnSignals();
        ::raise(SIGHUP);
        std::_Exit(7);
    };
    EXPECT_EXIT(ignore(), testing::ExitedWithCode(7), "");
}

}  // namespace boreforge
