// The one way in which the program without a window tells its user something.
#pragma once

#include <string>

namespace boreforge {

enum class MessageIcon { Information, Exclamation };

// How a message reaches the user: the window sets a modal message box with an OK button, the batch program
// the standard error stream. It may not throw. The initial hook drops the message.
using MessageHook = void (*)(const std::string& text, const std::string& title, MessageIcon icon);

// Sets the hook and gives back the earlier one; nullptr stands for the initial hook.
MessageHook SetMessageHook(MessageHook hook);

// Hands a message to the hook and returns when the user has seen it.
void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon);

// A message with the title "Error!" and the exclamation icon.
void ShowError(const std::string& text);

}  // namespace boreforge
