#include <QColorDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QTreeView>
#include <QWindow>

#include <algorithm>
#include <utility>

#include "dialogs/ControlTable.h"
#include "dialogs/Desktop.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/QtColor.h"
#include "dialogs/mFileDialog.h"

namespace boreforge {

namespace {

// Qt's own dialog. A desktop's dialog may add the extension only after it has asked about overwriting, and so
// replace a file without asking.
class FileDialog : public QFileDialog {
  public:
    FileDialog(QWidget* owner, const QString& title);

    void accept() override;

  private:
    void FitColumns();

    QLineEdit* name_ = nullptr;
    QListView* list_ = nullptr;
    QTreeView* table_ = nullptr;  // the same files with their sizes and dates
    bool fitted_ = false;
};

FileDialog::FileDialog(QWidget* owner, const QString& title) : QFileDialog(owner, title) {
    setOption(DontUseNativeDialog);
    name_ = findChild<QLineEdit*>("fileNameEdit");
    list_ = findChild<QListView*>("listView");
    table_ = findChild<QTreeView*>("treeView");
    connect(findChild<QFileSystemModel*>(), &QFileSystemModel::directoryLoaded, this,
            [this](const QString& loaded) {
                // Qt first loads the folder that was visited last.
                if (loaded == directory().absolutePath()) FitColumns();
            });
}

// Qt takes the selected row of the list, which may not match the typed name yet while the list is loading. So
// Return in the name box takes the typed name.
void FileDialog::accept() {
    const QString name = name_->text();
    QItemSelectionModel* const selection = list_->selectionModel();
    const QModelIndexList rows = selection->selectedRows();
    const bool picked = rows.size() == 1 && rows.first().data() == name;
    if (!picked && acceptMode() == AcceptSave) {
        const TypedName typed = ResolveTypedName(name, directory(), defaultSuffix());
        if (!typed.refusal.empty()) {
            ShowFailure({.headline = "Error - The Name Can't Be Used!", .reason = typed.refusal});
            return;
        }
        if (!typed.folder.isEmpty()) {
            setDirectory(typed.folder);
            name_->clear();
            return;
        }
        name_->setText(typed.file);
    }
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
    const QScrollBar& bar = *table_->verticalScrollBar();
    const int barWidth = bar.isVisible() ? 0 : bar.sizeHint().width();  // it may appear later
    const QRect screenArea = screen()->availableGeometry();
    const int wanted = width() + header.length() - table_->viewport()->width() + barWidth;
    const int maxWidth = screenArea.width() - (frameGeometry().width() - width());
    if (wanted <= width()) return;
    const QRect before = frameGeometry();
    resize(std::min(wanted, maxWidth), height());
    const QMargins frame = windowHandle()->frameMargins();
    move(CentredCorner(size(), frame, before, screenArea));
}

}  // namespace

std::unique_ptr<QFileDialog> NewFileDialog(QWidget* owner, const QString& title) {
    return std::make_unique<FileDialog>(owner, title);
}

// Qt's dialogs store settings in the user's home. Nothing can be stored below a device, so they find no
// settings and leave none.
void PrepareDesktop() {
    for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, "/dev/null/none");
}

bool IsWritableFolder(const QString& folder) { return QFileInfo(folder).isWritable(); }

// Qt's own dialog, since those of some desktops don't offer the custom colours.
std::int32_t DesktopColorDialog(ColorDialogArguments& record) {
    for (int i = 0; i < kCustomColors; ++i)
        QColorDialog::setCustomColor(i, ToQColor(CustomColors[i]));
    QColorDialog dialog(ToQColor(record.Color), record.Owner);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    for (int i = 0; i < kCustomColors; ++i)
        CustomColors[i] = ToPackedColor(QColorDialog::customColor(i));
    if (chosen) record.Color = ToPackedColor(dialog.selectedColor());
    return chosen ? 1 : 0;
}

}  // namespace boreforge
