// Messages to the user, from code that doesn't know whether there is a window.
#pragma once

#include <string>

namespace boreforge {

enum class MessageIcon { Information, Exclamation };

// Shows a message to the user: the desktop program's hook opens a message box, the batch program's prints to
// standard error. It must not throw. Without a hook, messages are dropped.
using MessageHook = void (*)(const std::string& text, const std::string& title, MessageIcon icon);

// Sets the hook and returns the earlier one; nullptr is no hook.
MessageHook SetMessageHook(MessageHook hook);

// Passes a message to the hook, which returns when the user has seen it.
void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon);

// A message with the title "Error!" and the exclamation icon.
void ShowError(const std::string& text);

}  // namespace boreforge
