#include "dialogs/mFileDialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>

namespace boreforge {

FileDialogCalls fileDialogCalls = ToolkitFileDialogs();

namespace {

// The raw result of the last dialog.
std::int32_t lastResult = 0;

QString ConvertFilter(QString filter) {
    filter.replace('|', QChar(0)).replace(':', QChar(0));
    return filter + QChar(0) + QChar(0);
}

// The toolkit's form of a converted filter: "text (pattern pattern)". A display text that names its own
// patterns is in that form already.
QStringList ToolkitFilters(const QString& converted) {
    const QStringList parts = converted.split(QChar(0));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        const QString patterns = '(' + QString(parts[i + 1]).replace(';', ' ') + ')';
        filters += parts[i].contains(patterns) ? parts[i] : parts[i] + ' ' + patterns;
    }
    return filters;
}

// Where a save may start in place of a folder: the folders of an installed program belong to the
// administrator, and the user's files go elsewhere.
QString WritableStart(const QString& folder) {
    if (QFileInfo(folder).isWritable()) return folder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

void SetStart(QFileDialog& dialog, const FileDialogArguments& record) {
    const QFileInfo named(record.FileName);
    const QString& folder = record.InitialFolder;
    if (named.isAbsolute() && named.dir().exists())
        dialog.setDirectory(named.dir());
    else if (QDir(folder).exists())
        dialog.setDirectory(dialog.acceptMode() == QFileDialog::AcceptSave ? WritableStart(folder) : folder);
    if (!record.FileName.isEmpty()) dialog.selectFile(named.fileName());
}

std::int32_t RunDialog(FileDialogArguments& record, QFileDialog::AcceptMode acceptMode,
                       QFileDialog::FileMode fileMode) {
    QFileDialog dialog(record.Owner, record.DialogTitle);
    // The toolkit's own dialog behaves alike on every desktop; that of a desktop may add an extension after
    // it has looked for an existing file, and would replace that file unasked.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(record.Flags & kOverwritePrompt));
    dialog.setAcceptMode(acceptMode);
    dialog.setFileMode(fileMode);
    const QStringList filters = ToolkitFilters(record.Filter);
    dialog.setNameFilters(filters);
    if (record.FilterIndex >= 1 && record.FilterIndex <= filters.size())
        dialog.selectNameFilter(filters[record.FilterIndex - 1]);
    dialog.setDefaultSuffix(record.DefaultExtension);
    SetStart(dialog, record);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return 0;
    record.FileName = dialog.selectedFiles().first();
    record.FileTitle = QFileInfo(record.FileName).fileName();
    record.FilterIndex = static_cast<std::int32_t>(filters.indexOf(dialog.selectedNameFilter())) + 1;
    return 1;
}

bool Show(FileDialogArguments& arguments, std::int32_t flags, std::int32_t (*call)(FileDialogArguments&)) {
    lastResult = 0;
    arguments.Flags = flags | (arguments.Flags & ~(kEnableHook | kEnableTemplate));
    arguments.Filter = ConvertFilter(arguments.Filter);
    lastResult = call(arguments);
    if (lastResult == 1) return true;
    arguments.FileName.clear();
    arguments.FileTitle.clear();
    arguments.Flags = 0;
    return false;
}

}  // namespace

FileDialogCalls ToolkitFileDialogs() {
    return {[](FileDialogArguments& record) {
                return RunDialog(
                    record, QFileDialog::AcceptOpen,
                    record.Flags & kFileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
            },
            [](FileDialogArguments& record) {
                return RunDialog(record, QFileDialog::AcceptSave, QFileDialog::AnyFile);
            }};
}

bool ShowOpenFileDialog(FileDialogArguments& arguments, bool FileMustExist, bool& ReadOnly,
                        bool HideReadOnly) {
    const std::int32_t flags = (FileMustExist ? kFileMustExist : 0) | (ReadOnly ? kReadOnlyTicked : 0) |
                               (HideReadOnly ? kHideReadOnly : 0);
    if (!Show(arguments, flags, fileDialogCalls.GetOpenFileName)) return false;
    if (arguments.Flags & kReadOnlyTicked) ReadOnly = true;
    return true;
}

bool ShowSaveFileDialog(FileDialogArguments& arguments, bool OverwritePrompt) {
    return Show(arguments, kHideReadOnly | (OverwritePrompt ? kOverwritePrompt : 0),
                fileDialogCalls.GetSaveFileName);
}

QString ProgramFolder(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString folder = program + '/' + name;
    return QDir(folder).exists() ? folder : program;
}

}  // namespace boreforge
