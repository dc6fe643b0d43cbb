// What the tests of the programs without a window share.
#pragma once

#include <sys/wait.h>

#include <cstdlib>

#include "support/CoreTest.h"

namespace boreforge {

class CommandTest : public CoreTest {
  protected:
    // Runs a command in the test's folder and returns its exit status.
    int Run(const std::string& command) {
        const int status = std::system(("cd '" + In("") + "' && " + command + " >out 2>err").c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Text(const std::string& name) const {
        const Bytes bytes = ReadBytes(In(name));
        return {bytes.begin(), bytes.end()};
    }
};

}  // namespace boreforge
