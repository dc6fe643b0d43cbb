// How messages reach the user of a window.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "base/Message.h"

namespace boreforge {

// The hook that shows a modal message box with an OK button over the active window and waits for the user.
void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon);

// Runs what an event asks for. When memory runs out the user is told, and the program goes on.
template <class Action>
void Guarded(Action action) {
    try {
        action();
    } catch (const std::exception&) {
        ShowError("Error - Not Enough Memory!");
    }
}

}  // namespace boreforge
