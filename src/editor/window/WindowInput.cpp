#include "editor/window/WindowInput.h"

#include <QGuiApplication>

#include <algorithm>
#include <span>

namespace boreforge {

namespace {

struct Key {
    int key;  // Qt's
    KeyCode code;
    quint32 position = ~0u;  // of a letter: its scan code on X11 and Wayland, the same on every keyboard
};
constexpr Key kKeys[] = {
    {Qt::Key_Escape, KeyCode::Escape}, {Qt::Key_Left, KeyCode::Left}, {Qt::Key_Up, KeyCode::Up},
    {Qt::Key_Right, KeyCode::Right},   {Qt::Key_Down, KeyCode::Down}, {Qt::Key_Delete, KeyCode::Delete},
    {Qt::Key_F, KeyCode::F, 41},       {Qt::Key_I, KeyCode::I, 31},   {Qt::Key_M, KeyCode::M, 58},
    {Qt::Key_R, KeyCode::R, 27},       {Qt::Key_W, KeyCode::W, 25},   {Qt::Key_Y, KeyCode::Y, 29},
    {Qt::Key_Z, KeyCode::Z, 52},
};
constexpr Key kSigns[] = {
    {Qt::Key_Plus, KeyCode::Plus},
    {Qt::Key_Equal, KeyCode::Plus},
    {Qt::Key_Minus, KeyCode::Minus},
    {Qt::Key_Underscore, KeyCode::Minus},
};
constexpr Key kKeypadSigns[] = {
    {Qt::Key_Plus, KeyCode::PadPlus},
    {Qt::Key_Minus, KeyCode::PadMinus},
    {Qt::Key_Slash, KeyCode::PadSlash},
};

KeyCode CodeIn(std::span<const Key> keys, const auto& member, const auto& wanted) {
    const auto found = std::ranges::find(keys, wanted, member);
    return found == keys.end() ? KeyCode::Other : found->code;
}

// Whether a key that typed "+", "=", "-" or "_" is the plus or the minus key of its keyboard. A digit key
// counts only if it types "+" or "-" without Shift.
bool IsSignKey(const QKeyEvent& event) {
    constexpr quint32 kOne = 10, kZero = 19;  // scan codes of the digit row's ends
    const bool isDigit = event.nativeScanCode() >= kOne && event.nativeScanCode() <= kZero;
    const bool plain = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus;
    return !isDigit || (plain && !event.modifiers().testFlag(Qt::ShiftModifier));
}

// The editor's code of a key, whatever modifiers are held. On a keyboard that types other letters, the Latin
// letter at the key's position counts.
KeyCode KeyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    const bool isForeignLetter = key > 0xFF && key < Qt::Key_Escape;
    if (isForeignLetter) return CodeIn(kKeys, &Key::position, event.nativeScanCode());
    const KeyCode code = CodeIn(kKeys, &Key::key, key);
    if (code != KeyCode::Other) return code;
    if (event.modifiers().testFlag(Qt::KeypadModifier)) return CodeIn(kKeypadSigns, &Key::key, key);
    return IsSignKey(event) ? CodeIn(kSigns, &Key::key, key) : KeyCode::Other;
}

}  // namespace

KeyPress KeyPressOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers();
    // The editor's codes are Windows' own.
    const quint32 native = QGuiApplication::platformName() == "windows" ? event.nativeVirtualKey() : 0;
    return {native ? KeyCode(native) : KeyCodeOf(event), held.testFlag(Qt::ShiftModifier),
            held.testFlag(Qt::ControlModifier), held.testFlag(Qt::AltModifier),
            held.testFlag(Qt::MetaModifier)};
}

MouseButton ButtonOf(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) return MouseButton::Left;
    return event.button() == Qt::RightButton ? MouseButton::Right : MouseButton::Other;
}

MouseState StateOf(const QMouseEvent& event) {
    if (event.buttons() == Qt::NoButton) return MouseState::None;
    if (event.buttons() == Qt::LeftButton) return MouseState::Left;
    return event.buttons() == Qt::RightButton ? MouseState::Right : MouseState::Other;
}

}  // namespace boreforge
