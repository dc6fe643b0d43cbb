// Messages to the user in message boxes.
#pragma once

#include <QCursor>
#include <QGuiApplication>

#include <new>

#include "base/Outcome.h"

namespace boreforge {

// Shows a modal message box with an OK button over the active window and waits for the user. A failure
// without words isn't shown.
void ShowFailure(const Failure& failure);

// An hourglass in place of the cursor for as long as it exists.
class WaitCursor {
  public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

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
