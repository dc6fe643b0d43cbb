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

// What a dialog is told and what it answers. A filter is a text of pairs, display text and pattern, all
// separated by "|" or ":", as in "Tracks (*.zrtrack)|*.zrtrack"; several patterns stand with ";" between
// them. On true, FileName is the chosen full path and FileTitle its last element, and FilterIndex and Flags
// are as the dialog left them. On false, FileName and FileTitle are empty and Flags 0. In both cases Filter
// leaves in its converted form: each separator a zero character, two zero characters at the end.
struct FileDialogArguments {
    QString FileName;
    QString FileTitle;
    QString Filter;
    std::int32_t FilterIndex = 1;  // the selected pair, from 1
    QString InitialFolder;         // one that doesn't exist is passed over
    QString DialogTitle;
    QString DefaultExtension;  // added to a name without one; no leading point
    QWidget* Owner = nullptr;
    std::int32_t Flags = 0;
};

// FileMustExist: a name at which nothing stands is not accepted. ReadOnly turns true when the dialog's box
// for it was ticked and is never turned false; the toolkit's dialog has no such box, hidden or not.
bool ShowOpenFileDialog(FileDialogArguments& arguments, bool FileMustExist, bool& ReadOnly,
                        bool HideReadOnly);

// OverwritePrompt: the dialog asks before an existing file is chosen, also when the extension was added.
bool ShowSaveFileDialog(FileDialogArguments& arguments, bool OverwritePrompt);

// The calls that run a dialog over the converted arguments and give 1 when the user chose a file. A test may
// answer for the user here.
struct FileDialogCalls {
    std::int32_t (*GetOpenFileName)(FileDialogArguments& record);
    std::int32_t (*GetSaveFileName)(FileDialogArguments& record);
};
FileDialogCalls ToolkitFileDialogs();
extern FileDialogCalls fileDialogCalls;

// The folder `name` beside the program, or the program's own folder where there is none of that name.
QString ProgramFolder(const QString& name);

}  // namespace boreforge
