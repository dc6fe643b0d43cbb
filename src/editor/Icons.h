// The pictures of the window and its buttons.
#pragma once

#include <QIcon>

namespace boreforge {

// The picture of that name in resources/icons.
QIcon IconOf(const char* name);

}  // namespace boreforge
