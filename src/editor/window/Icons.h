// The icons of the window and its buttons.
#pragma once

#include <QIcon>

namespace boreforge {

// The icon of this name in resources/icons.
QIcon IconOf(const char* name);

}  // namespace boreforge
