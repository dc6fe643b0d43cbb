#include "dialogs/mFileDialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QStandardPaths>
#include <QStringList>
#include <QTreeView>
#include <QWindow>

#include <algorithm>
#include <utility>

#include "dialogs/ControlTable.h"

namespace boreforge {

FileDialogCalls fileDialogCalls = QtFileDialogs();

namespace {

// The raw result of the last dialog.
std::int32_t lastResult = 0;

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

// Where a save dialog starts: in `folder`, or in the user's documents if only the administrator may write
// there, as in an installed program's folders.
QString WritableStart(const QString& folder) {
    if (QFileInfo(folder).isWritable()) return folder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

// Always Qt's own dialog. A desktop's dialog may add the extension after it has looked for an existing file,
// and would then replace that file without asking.
class FileDialog : public QFileDialog {
  public:
    FileDialog(const FileDialogArguments& record, AcceptMode acceptMode);

    void accept() override;

  private:
    void SetStart(const FileDialogArguments& record);
    void FitColumns();

    QLineEdit* name_ = nullptr;
    QListView* list_ = nullptr;
    QTreeView* table_ = nullptr;  // the same files with their sizes and dates
    bool fitted_ = false;
};

FileDialog::FileDialog(const FileDialogArguments& record, AcceptMode acceptMode)
    : QFileDialog(record.Owner, record.DialogTitle) {
    setOption(DontUseNativeDialog);
    setOption(DontConfirmOverwrite, !(record.Flags & kOverwritePrompt));
    setAcceptMode(acceptMode);
    if (acceptMode == AcceptSave)
        setLabelText(LookIn, "Save in:");
    else if (record.Flags & kFileMustExist)
        setFileMode(ExistingFile);
    const QStringList filters = QtFilters(record.Filter);
    setNameFilters(filters);
    selectNameFilter(filters.value(record.FilterIndex - 1));
    setDefaultSuffix(record.DefaultExtension);
    name_ = findChild<QLineEdit*>("fileNameEdit");
    list_ = findChild<QListView*>("listView");
    table_ = findChild<QTreeView*>("treeView");
    connect(findChild<QFileSystemModel*>(), &QFileSystemModel::directoryLoaded, this,
            [this](const QString& loaded) {
                // Qt first loads the folder that was visited last.
                if (loaded == directory().absolutePath()) FitColumns();
            });
    SetStart(record);
}

void FileDialog::SetStart(const FileDialogArguments& record) {
    const QFileInfo named(record.FileName);
    const QString& folder = record.InitialFolder;
    if (named.isAbsolute() && named.dir().exists())
        setDirectory(named.dir());
    else if (QDir(folder).exists())
        setDirectory(acceptMode() == AcceptSave ? WritableStart(folder) : folder);
    if (!record.FileName.isEmpty()) selectFile(named.fileName());
}

// Qt takes the selected row of the list, which may not match the typed name yet while the list is loading. It
// also splits a typed name at double quotes and would save under a part of it. So Return in the name box
// takes the typed name, and a name with a double quote must be picked from the list.
void FileDialog::accept() {
    const QString name = name_->text();
    QItemSelectionModel* const selection = list_->selectionModel();
    const QModelIndexList rows = selection->selectedRows();
    const bool picked = rows.size() == 1 && rows.first().data() == name;
    if (name.contains('"') && !picked) return;
    if (name_->hasFocus() && !name.isEmpty() && !picked) selection->clearSelection();
    QFileDialog::accept();
}

// Fits the columns to the folder's contents. The first time, also widens the dialog until it shows all
// columns, as far as the screen allows.
void FileDialog::FitColumns() {
    if (table_->model()->rowCount(table_->rootIndex()) == 0) return;
    const QHeaderView& header = *table_->header();
    for (int column = 0; column < header.count(); ++column)
        table_->resizeColumnToContents(column);
    if (std::exchange(fitted_, true)) return;
    const QRect screenArea = screen()->availableGeometry();
    const int wanted = width() + header.length() - table_->viewport()->width();
    const int maxWidth = screenArea.width() - (frameGeometry().width() - width());
    if (wanted <= width()) return;
    const QRect before = frameGeometry();
    resize(std::min(wanted, maxWidth), height());
    const QMargins frame = windowHandle()->frameMargins();
    move(CentredCorner(size(), frame, before, screenArea));
}

std::int32_t RunDialog(FileDialogArguments& record, QFileDialog::AcceptMode acceptMode) {
    FileDialog dialog(record, acceptMode);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return 0;
    record.FileName = dialog.selectedFiles().first();
    record.FileTitle = QFileInfo(record.FileName).fileName();
    const qsizetype filter = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    record.FilterIndex = static_cast<std::int32_t>(filter) + 1;
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

FileDialogCalls QtFileDialogs() {
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

QString ProgramFolder(const QString& name) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString folder = program + '/' + name;
    return QDir(folder).exists() ? folder : program;
}

}  // namespace boreforge
