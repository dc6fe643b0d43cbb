// What differs between Windows and other desktops: the dialogs, and the settings that Qt needs before it
// starts.
#pragma once

#include <QFileDialog>
#include <QString>

#include <cstdint>
#include <memory>

#include "dialogs/mColorDialog.h"

namespace boreforge {

// Call this before the QApplication is made.
void PrepareDesktop();

// A file dialog that isn't shown yet.
std::unique_ptr<QFileDialog> NewFileDialog(QWidget* owner, const QString& title);

// Whether the user may make files in a folder.
bool IsWritableFolder(const QString& folder);

// Runs the colour dialog, like ChooseColor.
std::int32_t DesktopColorDialog(ColorDialogArguments& record);

}  // namespace boreforge
