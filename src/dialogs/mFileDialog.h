// Asks the user for a file to open or to write.
#pragma once

#include <QString>
#include <QWidget>

#include <cstdint>

namespace boreforge {

// Dialog flags, with the values that callers of the platform's own dialogs know.
enum FileDialogFlag : std::int32_t {
    kReadOnlyTicked = 0x1,
    kOverwritePrompt = 0x2,
    kHideReadOnly = 0x4,
    kEnableHook = 0x20,      // can't be asked for
    kEnableTemplate = 0x40,  // can't be asked for
    kFileMustExist = 0x1000,
};

// What a dialog is told and what it answers.
struct FileDialogArguments {
    QString FileName{};   // the initial name; then the chosen full path, or empty if none was chosen
    QString FileTitle{};  // then the last element of that path, or empty
    // Pairs of display text and pattern, all separated by "|" or ":", as in "Tracks (*.zrtrack)|*.zrtrack";
    // ";" separates several patterns. Afterwards each separator is a zero character, and two zero characters
    // are added at the end.
    QString Filter{};
    std::int32_t FilterIndex = 1;  // the selected pair, from 1; then the one the user ended on
    QString InitialFolder{};       // ignored if it doesn't exist
    QString DialogTitle{};
    QString DefaultExtension{};  // without a point; added to a name without one
    QWidget* Owner = nullptr;
    bool FileMustExist = false;    // open only: a name without a file is refused
    bool ReadOnly = false;         // open only: turns true if its box was ticked; Qt's dialog has no such box
    bool HideReadOnly = false;     // open only; a save dialog never shows the box
    bool OverwritePrompt = false;  // save only: asks before an existing file is chosen
    std::int32_t Flags = 0;        // further flags; then those the dialog left, or 0 if no file was chosen
};

// Each runs a dialog; true if the user chose a file.
bool ShowOpenFileDialog(FileDialogArguments& arguments);
bool ShowSaveFileDialog(FileDialogArguments& arguments);

// The calls that run a dialog over the converted arguments: 1 if the user chose a file, else 0. A test may
// answer for the user here.
struct FileDialogCalls {
    std::int32_t (*GetOpenFileName)(FileDialogArguments& record);
    std::int32_t (*GetSaveFileName)(FileDialogArguments& record);
};
FileDialogCalls QtFileDialogs();
extern FileDialogCalls fileDialogCalls;

// The folder `name` beside the program, or the program's own folder if there is none.
QString ProgramFolder(const QString& name);

}  // namespace boreforge
