#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "platform/Process.h"

namespace boreforge {

ProcessSetup::ProcessSetup() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        const bool isOpen = ::fcntl(stream, F_GETFD) >= 0;
        // The system uses the smallest free number.
        if (!isOpen && ::open("/dev/null", O_RDWR) != stream) std::_Exit(EXIT_FAILURE);
    }
    (void)std::signal(SIGXFSZ, SIG_IGN);
}

ProcessSetup::~ProcessSetup() = default;

std::vector<std::string> ProgramArguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

unsigned long ProcessId() { return static_cast<unsigned long>(::getpid()); }

}  // namespace boreforge
