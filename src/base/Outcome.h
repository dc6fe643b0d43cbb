// How an operation ended. A failure is returned, with its reason in words, to whoever shows it to the user.
#pragma once

#include <new>
#include <optional>
#include <string>
#include <utility>

namespace boreforge {

// The failures that callers handle differently. For all others only the words matter.
enum class Problem {
    Other,
    Changed,   // another program changed the file since it was read, or made one in its place
    InUse,     // another program is saving the file right now
    NoAccess,  // the user may not read the file, or not replace it where it is
};

// Words for the user. Any of them can be empty.
struct Failure {
    std::string headline = {};     // "Error - The Track Can't Be Saved!"
    std::string path = {};         // of the file
    std::string reason = {};       // a sentence: "No space left on device."
    std::string consequence = {};  // what was or was not done: "Nothing was written."
    std::string advice = {};       // what to do now in the window: "Open the track again."
    Problem problem = Problem::Other;
    bool isNotice = false;  // nothing went wrong, but there was nothing to do

    // All of it in paragraphs: the headline, the path with the reason below it, the consequence with the
    // advice.
    std::string Text() const;
};

class [[nodiscard]] Outcome {
  public:
    Outcome() = default;                                        // it worked
    Outcome(Failure failure) : failure_(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

    // True if it worked.
    explicit operator bool() const { return !failure_; }

    // Why it failed. Call only after a failure.
    const Failure& Why() const { return *failure_; }

    // What `next` returns if this worked, else this failure: for steps that follow one another.
    template <class Next>
    Outcome Then(const Next& next) const {
        return failure_ ? *this : next();
    }

    // This outcome, with each empty text taken from `context`.
    Outcome With(const Failure& context) const;

  private:
    std::optional<Failure> failure_;
};

// The reason for a failed system call, from the number in errno.
Failure SystemFailure(int error);

// What `action` returns, or `failure` if memory runs out in it. The failure is moved, so no memory is needed
// to return it.
template <class Action>
Outcome CatchingOutOfMemory(const Action& action, Failure failure) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return Outcome(std::move(failure));
    }
}

}  // namespace boreforge
