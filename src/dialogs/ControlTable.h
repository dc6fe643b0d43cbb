// Places of windows and controls, in twips as the windows were designed: 1440 to the inch, 15 to the logical
// pixel, which the toolkit scales on high-density screens.
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

#include <algorithm>
#include <utility>
#include <vector>

namespace boreforge {

constexpr int PixelsOf(int twips) { return twips / 15; }

struct ControlPlace {
    const char* name;              // the object name
    int left, top, width, height;  // twips, relative to the parent
    int tabIndex;
};

// The size of the text in both windows, 8.25 points at 96 dots per inch; it fits the places.
inline constexpr int kTextPixels = 11;

inline QFont WindowFont(const QWidget& widget) {
    QFont font = widget.font();
    font.setPixelSize(kTextPixels);
    return font;
}

// Gives a control its name, its place and the font of the windows.
inline void Place(QWidget* control, const ControlPlace& place) {
    control->setObjectName(QString::fromLatin1(place.name));
    control->setGeometry(PixelsOf(place.left), PixelsOf(place.top), PixelsOf(place.width),
                         PixelsOf(place.height));
    control->setFont(WindowFont(*control));
}

// Controls with their tab indices; the key focus goes through them in ascending order.
using TabOrder = std::vector<std::pair<int, QWidget*>>;

inline void ApplyTabOrder(TabOrder order) {
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

// Narrows the letters of a text until it fits into `size` logical pixels; places are fixed, fonts differ in
// width. With `wrap` the text may take several lines.
inline void FitText(QWidget* control, const QString& text, QSize size, bool wrap = false) {
    constexpr int kNarrowest = 60;  // percent
    QFont font = control->font();
    const auto taken = [&](int stretch) {
        font.setStretch(stretch);
        const QRect room(QPoint(0, 0), QSize(size.width(), 1000));
        return QFontMetrics(font).boundingRect(room, wrap ? Qt::TextWordWrap : 0, text).size();
    };
    // The width follows the letters', so that few of them have to be tried: each is a search among the fonts.
    int stretch = 100;
    if (const int width = taken(stretch).width(); !wrap && width > size.width())
        stretch = std::max(kNarrowest, stretch * size.width() / width / 2 * 2);
    while (stretch > kNarrowest && taken(stretch).boundedTo(size) != taken(stretch))
        stretch -= 2;
    font.setStretch(stretch);
    control->setFont(font);
}

}  // namespace boreforge
