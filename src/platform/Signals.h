// What happens to an unfinished file when a signal ends the program.
#pragma once

#include <csignal>
#include <string>

namespace boreforge {

// From now on a file that is being written is removed when the user or the system ends the program by a
// signal that can be caught: SIGINT, SIGTERM or SIGHUP, except those that were ignored before.
void RemoveUnfinishedOnSignals();

// Holds those signals back while a file and the record of it come into being or go together.
class BlockedSignals {
  public:
    BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals();

  private:
    sigset_t before_;
};

// The file that such a signal removes: `name` in an open folder. Call both while the signals are blocked.
void NoteUnfinished(int folder, const std::string& name);
void ForgetUnfinished();

}  // namespace boreforge
