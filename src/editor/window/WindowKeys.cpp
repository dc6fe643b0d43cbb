#include "editor/window/WindowKeys.h"

#include <QGuiApplication>

namespace boreforge {

namespace {

// The Latin letter at a key's position, for keyboards that type other letters: on X11 and Wayland a position
// has the same scan code on every keyboard.
int LetterAt(quint32 scanCode) {
    switch (scanCode) {
        case 25:
            return Qt::Key_W;
        case 27:
            return Qt::Key_R;
        case 29:
            return Qt::Key_Y;
        case 31:
            return Qt::Key_I;
        case 41:
            return Qt::Key_F;
        case 52:
            return Qt::Key_Z;
        case 58:
            return Qt::Key_M;
        default:
            return 0;
    }
}

// True for a key of the digit row, by its position.
bool IsDigitKey(const QKeyEvent& event) {
    constexpr quint32 kOne = 10, kZero = 19;
    return event.nativeScanCode() >= kOne && event.nativeScanCode() <= kZero;
}

// Whether a key that typed "+", "=", "-" or "_" is the plus or the minus key of its keyboard. On some
// keyboards a digit key types one of them; that counts only for a "+" or "-" without Shift.
bool IsSignKey(const QKeyEvent& event) {
    const bool plain = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus;
    return !IsDigitKey(event) || (plain && !event.modifiers().testFlag(Qt::ShiftModifier));
}

// The editor's code of a key, whatever modifiers are held.
KeyCode KeyCodeOf(const QKeyEvent& event) {
    const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
    const bool foreignLetter = event.key() > 0xFF && event.key() < Qt::Key_Escape;
    switch (foreignLetter ? LetterAt(event.nativeScanCode()) : event.key()) {
        case Qt::Key_Escape:
            return KeyCode::Escape;
        case Qt::Key_Left:
            return KeyCode::Left;
        case Qt::Key_Up:
            return KeyCode::Up;
        case Qt::Key_Right:
            return KeyCode::Right;
        case Qt::Key_Down:
            return KeyCode::Down;
        case Qt::Key_Delete:
            return KeyCode::Delete;
        case Qt::Key_F:
            return KeyCode::F;
        case Qt::Key_I:
            return KeyCode::I;
        case Qt::Key_M:
            return KeyCode::M;
        case Qt::Key_R:
            return KeyCode::R;
        case Qt::Key_W:
            return KeyCode::W;
        case Qt::Key_Y:
            return KeyCode::Y;
        case Qt::Key_Z:
            return KeyCode::Z;
        case Qt::Key_Plus:
            if (keypad) return KeyCode::PadPlus;
            return IsSignKey(event) ? KeyCode::Plus : KeyCode::Other;
        case Qt::Key_Equal:
            return !keypad && IsSignKey(event) ? KeyCode::Plus : KeyCode::Other;
        case Qt::Key_Minus:
            if (keypad) return KeyCode::PadMinus;
            return IsSignKey(event) ? KeyCode::Minus : KeyCode::Other;
        case Qt::Key_Underscore:
            return IsSignKey(event) ? KeyCode::Minus : KeyCode::Other;
        case Qt::Key_Slash:
            return keypad ? KeyCode::PadSlash : KeyCode::Slash;
        default:
            return KeyCode::Other;
    }
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

}  // namespace boreforge
