// Removes an unfinished file when a signal ends the program.
#pragma once

#include <string>

namespace boreforge {

// Call this from the main thread, the one that writes files. From now on SIGINT, SIGTERM and SIGHUP, except
// those that are ignored already, remove the file being written before they end the program. On Windows these
// are Ctrl+C, Ctrl+Break, and the closing of the console.
void RemoveUnfinishedOnSignals();

// Blocks those signals while a file and the record of it are created or removed together.
class BlockedSignals {
  public:
    BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals();

  private:
    unsigned blocked_ = 0;  // a bit for each signal that was not blocked before
};

// Set and forget the files that such a signal removes: `name` in an open folder. A placeholder is removed
// only while it is empty. Call these with the signals blocked.
void NoteUnfinished(int folder, const std::string& name);
void NotePlaceholder(int folder, const std::string& name);
void ForgetUnfinished();

}  // namespace boreforge
