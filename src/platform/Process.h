// What a program sets up once, at its start.
#pragma once

#include <string>
#include <vector>

namespace boreforge {

// Prepares the process for our files and texts; every main function does this first. A standard stream that
// is closed becomes the null device: otherwise the next file that is opened would get its number, and
// messages would go into that file. A write beyond a limit on file sizes fails instead of ending the program.
// What other programs would notice, such as the console's code page, is restored at the end of the scope.
class ProcessSetup {
  public:
    ProcessSetup();
    ProcessSetup(const ProcessSetup&) = delete;
    ProcessSetup& operator=(const ProcessSetup&) = delete;
    ~ProcessSetup();  // NOLINT(performance-trivially-destructible): it is not trivial on every system
};

// The arguments after the program's name, in UTF-8 on every system.
std::vector<std::string> ProgramArguments(int count, char** arguments);

// This process's number, as in names of temporary files.
unsigned long ProcessId();

}  // namespace boreforge
