// Asks the user for a file to open or to write.
#pragma once

#include <QDir>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <string>

namespace boreforge {

// Dialog flags, with the same values as for the platform's own dialogs.
enum FileDialogFlag : std::int32_t {
    kReadOnlyTicked = 0x1,
    kOverwritePrompt = 0x2,
    kHideReadOnly = 0x4,
    kEnableHook = 0x20,      // always removed
    kEnableTemplate = 0x40,  // always removed
    kFileMustExist = 0x1000,
};

// Input and output of a dialog.
struct FileDialogArguments {
    QString FileName{};   // in: the initial name; out: the full path chosen, or empty
    QString FileTitle{};  // out: the last element of that path, or empty
    // Pairs of display text and pattern, all separated by "|" or ":", as in "Tracks (*.zrtrack)|*.zrtrack";
    // ";" separates several patterns. Afterwards each separator is a zero character, and two zero characters
    // are added at the end.
    QString Filter{};
    std::int32_t FilterIndex = 1;  // in: the selected pair, from 1; out: the one selected last
    QString InitialFolder{};       // ignored if it doesn't exist
    QString DialogTitle{};
    QString DefaultExtension{};  // without the dot; added to a name without this extension
    QWidget* Owner = nullptr;
    bool FileMustExist = false;    // open only: refuses the name of a missing file
    bool ReadOnly = false;         // open only: set if its box was ticked; Qt's dialog has no such box
    bool HideReadOnly = false;     // open only; a save dialog never shows the box
    bool OverwritePrompt = false;  // save only: asks before it accepts an existing file
    std::int32_t Flags = 0;  // in: further flags; out: those set by the dialog, or 0 if no file was chosen
};

// Each runs a dialog; true if the user chose a file.
[[nodiscard]] bool ShowOpenFileDialog(FileDialogArguments& arguments);
[[nodiscard]] bool ShowSaveFileDialog(FileDialogArguments& arguments);

// The functions that run a dialog with converted arguments: 1 if the user chose a file, else 0. Tests replace
// them to answer for the user.
struct FileDialogCalls {
    std::int32_t (*GetOpenFileName)(FileDialogArguments& record);
    std::int32_t (*GetSaveFileName)(FileDialogArguments& record);
};
FileDialogCalls DesktopFileDialogs();
extern FileDialogCalls fileDialogCalls;

// What the user means by a name typed into a save dialog: a folder to enter, a file with the dialog's
// extension, or a refusal, with its reason.
struct TypedName {
    QString folder{}, file{};
    std::string refusal{};
};
TypedName ResolveTypedName(const QString& typed, const QDir& folder, const QString& extension);

// The folder `name` beside the program, or the program's own folder if that doesn't exist.
QString ProgramFolder(const QString& name);

}  // namespace boreforge
