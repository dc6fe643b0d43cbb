#include <csignal>

#include "platform/Process.h"

namespace boreforge {

ProcessSetup::ProcessSetup() { (void)std::signal(SIGXFSZ, SIG_IGN); }

ProcessSetup::~ProcessSetup() = default;

std::vector<std::string> ProgramArguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

}  // namespace boreforge
