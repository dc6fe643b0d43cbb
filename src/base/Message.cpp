#include "base/Message.h"

#include <utility>

namespace boreforge {

namespace {
MessageHook currentHook = nullptr;
}

MessageHook SetMessageHook(MessageHook hook) { return std::exchange(currentHook, hook); }

void ShowMessage(const std::string& text, const std::string& title, MessageIcon icon) {
    if (currentHook) currentHook(text, title, icon);
}

void ShowError(const std::string& text) { ShowMessage(text, "Error!", MessageIcon::Exclamation); }

}  // namespace boreforge
