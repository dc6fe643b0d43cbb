// Messages to the user in message boxes.
#pragma once

#include <new>

#include "base/Outcome.h"

namespace boreforge {

// Shows a modal message box with an OK button over the active window and waits for the user. A failure
// without words isn't shown.
void ShowFailure(const Failure& failure);

// Runs the action of an event. If memory runs out, tells the user and carries on.
template <class Action>
void ReportingOutOfMemory(const Action& action) {
    try {
        action();
    } catch (const std::bad_alloc&) {
        ShowFailure({.headline = "Error - Not Enough Memory!"});
    }
}

}  // namespace boreforge
