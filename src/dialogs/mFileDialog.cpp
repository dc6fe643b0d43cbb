#include "dialogs/mFileDialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#include <memory>

#include "dialogs/Desktop.h"

namespace boreforge {

FileDialogCalls fileDialogCalls = DesktopFileDialogs();

namespace {

QString ConvertFilter(QString filter) {
    filter.replace('|', QChar(0)).replace(':', QChar(0));
    return filter + QChar(0) + QChar(0);
}

// A converted filter in Qt's form: "text (pattern pattern)". A display text that already contains its
// patterns stays as it is.
QStringList QtFilters(const QString& converted) {
    const QStringList parts = converted.split(QChar(0));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        const QString patterns = '(' + QString(parts[i + 1]).replace(';', ' ') + ')';
        filters += parts[i].contains(patterns) ? parts[i] : parts[i] + ' ' + patterns;
    }
    return filters;
}

// The folder of the named file, or else the initial one. A dialog that saves doesn't start where the user may
// not write, as in an installed program's folders.
void SetStartFolder(QFileDialog& dialog, const FileDialogArguments& record) {
    const QFileInfo named(record.FileName);
    const QString& folder = record.InitialFolder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (named.isAbsolute() && named.dir().exists())
        dialog.setDirectory(named.dir());
    else if (QDir(folder).exists() &&
             (dialog.acceptMode() == QFileDialog::AcceptOpen || IsWritableFolder(folder)))
        dialog.setDirectory(folder);
    else if (QDir(folder).exists())
        dialog.setDirectory(QDir(documents).exists() ? documents : QDir::homePath());
    if (!record.FileName.isEmpty()) dialog.selectFile(named.fileName());
}

std::int32_t RunDialog(FileDialogArguments& record, QFileDialog::AcceptMode acceptMode) {
    const std::unique_ptr<QFileDialog> shown = NewFileDialog(record.Owner, record.DialogTitle);
    QFileDialog& dialog = *shown;
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(record.Flags & kOverwritePrompt));
    dialog.setAcceptMode(acceptMode);
    if (acceptMode == QFileDialog::AcceptSave)
        dialog.setLabelText(QFileDialog::LookIn, "Save in:");
    else if (record.Flags & kFileMustExist)
        dialog.setFileMode(QFileDialog::ExistingFile);
    const QStringList filters = QtFilters(record.Filter);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(record.FilterIndex - 1));
    dialog.setDefaultSuffix(record.DefaultExtension);
    SetStartFolder(dialog, record);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return 0;
    record.FileName = dialog.selectedFiles().first();
    record.FileTitle = QFileInfo(record.FileName).fileName();
    const qsizetype filter = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    record.FilterIndex = static_cast<std::int32_t>(filter) + 1;
    return 1;
}

bool Show(FileDialogArguments& arguments, std::int32_t flags, std::int32_t (*call)(FileDialogArguments&)) {
    arguments.Flags = flags | (arguments.Flags & ~(kEnableHook | kEnableTemplate));
    arguments.Filter = ConvertFilter(arguments.Filter);
    if (call(arguments) == 1) return true;
    arguments.FileName.clear();
    arguments.FileTitle.clear();
    arguments.Flags = 0;
    return false;
}

}  // namespace

FileDialogCalls DesktopFileDialogs() {
    return {[](FileDialogArguments& record) { return RunDialog(record, QFileDialog::AcceptOpen); },
            [](FileDialogArguments& record) { return RunDialog(record, QFileDialog::AcceptSave); }};
}

bool ShowOpenFileDialog(FileDialogArguments& arguments) {
    const std::int32_t flags = (arguments.FileMustExist ? kFileMustExist : 0) |
                               (arguments.ReadOnly ? kReadOnlyTicked : 0) |
                               (arguments.HideReadOnly ? kHideReadOnly : 0);
    if (!Show(arguments, flags, fileDialogCalls.GetOpenFileName)) return false;
    if (arguments.Flags & kReadOnlyTicked) arguments.ReadOnly = true;
    return true;
}

bool ShowSaveFileDialog(FileDialogArguments& arguments) {
    const std::int32_t prompt = arguments.OverwritePrompt ? kOverwritePrompt : 0;
    return Show(arguments, kHideReadOnly | prompt, fileDialogCalls.GetSaveFileName);
}

TypedName ResolveTypedName(const QString& typed, const QDir& folder, const QString& extension) {
    const QString path = typed.startsWith("~/") ? QDir::homePath() + typed.mid(1) : typed;
    const QFileInfo info(folder, path);
    if (info.isDir()) return {.folder = info.absoluteFilePath()};
    if (!info.dir().exists()) return {.refusal = "There is no such folder."};
    const QString ending = '.' + extension, name = info.fileName();
    if (name.isEmpty() || name == ending) return {.refusal = "The file needs a name."};
    // Qt treats each quoted part as a file of its own.
    if (name.contains('"')) return {.refusal = "A name that is typed can't have a double quote."};
    const bool hasEnding = extension.isEmpty() || name.endsWith(ending, Qt::CaseInsensitive);
    return {.file = path + (hasEnding ? "" : ending)};
}

QString ProgramFolder(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString folder = program + '/' + name;
    return QDir(folder).exists() ? folder : program;
}

}  // namespace boreforge
