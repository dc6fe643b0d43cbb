#include <QColorDialog>
#include <QFileInfo>
#include <QSettings>

#include "dialogs/Desktop.h"
#include "dialogs/QtColor.h"

namespace boreforge {

// Qt's dialogs store settings in the user's home. Nothing can be stored below a device, so they find no
// settings and leave none.
void PrepareDesktop() {
    for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat})
        QSettings::setPath(format, QSettings::UserScope, "/dev/null/none");
}

bool TakesFiles(const QString& folder) { return QFileInfo(folder).isWritable(); }

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
