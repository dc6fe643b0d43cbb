// Conversions between the program's colours and Qt's.
#pragma once

#include <QColor>
#include <QPalette>

#include "base/Values.h"

namespace boreforge {

inline QColor ToQColor(const ColorRGB& color) { return QColor(color.red, color.green, color.blue); }

inline QColor ToQColor(PackedColor color) { return ToQColor(ToColorRGB(color)); }

// The alpha channel is dropped.
inline PackedColor ToPackedColor(const QColor& color) {
    return PackColor(color.red(), color.green(), color.blue());
}

// Whether this is the palette of a dark desktop.
inline bool IsDark(const QPalette& palette) {
    constexpr int kMiddle = 128;  // of 255
    return palette.color(QPalette::Window).lightness() < kMiddle;
}

}  // namespace boreforge
