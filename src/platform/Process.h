// What the system wants from a program as a whole.
#pragma once

#include <string>
#include <vector>

namespace boreforge {

// Prepares the process for our files and texts; what changes for others, such as the console's code page, is
// restored at the end of its scope. Files that may not grow further are failed writes.
class ProcessSetup {
  public:
    ProcessSetup();
    ProcessSetup(const ProcessSetup&) = delete;
    ProcessSetup& operator=(const ProcessSetup&) = delete;
    ~ProcessSetup();  // NOLINT(performance-trivially-destructible): it is not trivial on every system
};

// The arguments after the program's name, in UTF-8 on every system.
std::vector<std::string> ProgramArguments(int count, char** arguments);

}  // namespace boreforge
