// Why a file could not be read or written, for the message that the user sees.
#pragma once

#include <new>
#include <string>

namespace boreforge {

enum class FileProblem {
    None,
    Missing,
    WrongName,       // not that of a file of this kind
    Damaged,         // see `place`
    System,          // see `code`
    NotRegular,      // a folder, a device, a pipe
    TooLarge,        // 2 GiB or more, or more than the format can hold
    WrongBeginning,  // not a file of the expected kind
    KeepsChanging,   // while it was read
    IsTrack,         // and must not be replaced by something else
    IsShape,         // the same
    RightsLost,      // its owner, group or access list can't be kept
    Changed,         // by another program, since it was read
    InUse,           // another program is saving it right now
};

struct FileFailure {
    FileProblem problem = FileProblem::None;
    int code = 0;            // errno, for FileProblem::System
    std::string place = {};  // a sentence on where a damaged file fails
};

// Why the last call that reads or writes a file returned false. Only meaningful right after it did.
extern FileFailure lastFileFailure;

// Each records a failure and returns false, for "return Fail(...)".
bool Fail(FileProblem problem);
bool FailAsDamaged(const std::string& place);
bool FailBySystem();  // with the current errno
bool FailByMemory();  // memory has run out

// What `action` returns, or a failure if memory runs out in it.
template <class Action>
[[nodiscard]] bool IfMemorySuffices(const Action& action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return FailByMemory();
    }
}

// The last failure as a sentence, for example "No space left on device."
std::string FailureText();

// A message about the file at `path`: the headline, the path, the reason, and the consequence. If the reason
// is IsTrack or IsShape, the headline is "Error - That File Is a Track!" or "... a Shape!" instead.
std::string FailureMessage(const std::string& headline, const std::string& path,
                           const std::string& consequence);

}  // namespace boreforge
