// Removes unfinished files when a signal ends the program.
#pragma once

#include <cstddef>
#include <string>

namespace boreforge {

// Call this once, from the main thread, the one that writes files. From now on every signal that would end
// the program and can be caught removes the files being written first. Signals that are ignored or handled
// already are left alone. On Windows these are Ctrl+C, Ctrl+Break, and the closing of the console.
void RemoveUnfinishedOnSignals();

// Blocks those signals, so that a file and its record change together. Can be nested.
class BlockedSignals {
  public:
    BlockedSignals();
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals();
};

// Records that `name` in an open folder is to be removed on such a signal, and forgets it again. At most
// kMaxUnfinished files at a time; a job writes two. Call these with the signals blocked.
inline constexpr std::size_t kMaxUnfinished = 4;
void NoteUnfinished(int folder, const std::string& name);
void ForgetUnfinished(int folder, const std::string& name);

}  // namespace boreforge
