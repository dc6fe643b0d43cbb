// Messages to the user in message boxes.
#pragma once

#include <new>
#include <string>

#include "base/Message.h"

namespace boreforge {

// A message hook: shows a modal message box with an OK button over the active window and waits for the user.
void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon);

// Runs the action of an event. If memory runs out, tells the user and carries on.
template <class Action>
void Guarded(Action action) {
    try {
        action();
    } catch (const std::bad_alloc&) {
        ShowError("Error - Not Enough Memory!");
    }
}

}  // namespace boreforge
