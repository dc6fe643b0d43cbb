// What Windows does differently from other desktops: their dialogs, and what Qt must know before it starts.
#pragma once

#include <QString>

#include <cstdint>

#include "dialogs/mColorDialog.h"

namespace boreforge {

// Call this before the QApplication is made.
void PrepareDesktop();

// Whether the user may make files in a folder.
bool TakesFiles(const QString& folder);

// Runs the colour dialog, like ChooseColor.
std::int32_t DesktopColorDialog(ColorDialogArguments& record);

}  // namespace boreforge
