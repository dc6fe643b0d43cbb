// Removes an unfinished file when a signal ends the program.
#pragma once

#include <csignal>
#include <string>

namespace boreforge {

// Call this from the main thread, the one that writes files. From now on SIGINT, SIGTERM and SIGHUP, except
// those that are ignored already, remove the file being written before they end the program.
void RemoveUnfinishedOnSignals();

// Blocks those signals while a file and the record of it are created or removed together.
class BlockedSignals {
  public:
    BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals();

  private:
    sigset_t before_;
};

// Set and forget the files that such a signal removes: `name` in an open folder. A placeholder is removed
// only while it is empty. Call these with the signals blocked.
void NoteUnfinished(int folder, const std::string& name);
void NotePlaceholder(int folder, const std::string& name);
void ForgetUnfinished();

}  // namespace boreforge
