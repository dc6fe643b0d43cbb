#include <windows.h>

#include <commdlg.h>

#include <QApplication>
#include <QDir>

#include <algorithm>
#include <iterator>

#include "dialogs/Desktop.h"

namespace boreforge {

// The style that Qt would take draws checked tools in a blue on which their icons are hard to see. It doesn't
// know dark mode either.
void PrepareDesktop() {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
    QApplication::setStyle("fusion");
}

std::unique_ptr<QFileDialog> NewFileDialog(QWidget* owner, const QString& title) {
    return std::make_unique<QFileDialog>(owner, title);
}

// Asks the system, since Qt knows only the read-only attribute.
bool IsWritableFolder(const QString& folder) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const std::wstring path = QDir::toNativeSeparators(folder).toStdWString();
    const HANDLE handle = ::CreateFileW(path.c_str(), FILE_ADD_FILE, kShareAll, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(handle);
    return true;
}

std::int32_t DesktopColorDialog(ColorDialogArguments& record) {
    COLORREF custom[kCustomColors];
    std::copy(CustomColors.begin(), CustomColors.end(), custom);
    CHOOSECOLORW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = record.Owner ? reinterpret_cast<HWND>(record.Owner->window()->winId()) : nullptr;
    dialog.rgbResult = static_cast<COLORREF>(record.Color);
    dialog.lpCustColors = custom;
    dialog.Flags = static_cast<DWORD>(record.Flags);
    const bool chosen = ::ChooseColorW(&dialog);
    std::copy(std::begin(custom), std::end(custom), CustomColors.begin());
    if (chosen) record.Color = static_cast<PackedColor>(dialog.rgbResult);
    return chosen ? 1 : 0;
}

}  // namespace boreforge
