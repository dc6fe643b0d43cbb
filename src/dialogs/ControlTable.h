// Places of windows and controls, in twips as the windows were designed: 1440 to the inch, 15 to the logical
// pixel, which the toolkit scales on high-density screens.
#pragma once

#include <QFont>
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

// Gives a control its name and its place.
inline void Place(QWidget* control, const ControlPlace& place) {
    control->setObjectName(QString::fromLatin1(place.name));
    control->setGeometry(PixelsOf(place.left), PixelsOf(place.top), PixelsOf(place.width),
                         PixelsOf(place.height));
}

// Controls with their tab indices; the key focus goes through them in ascending order.
using TabOrder = std::vector<std::pair<int, QWidget*>>;

inline void ApplyTabOrder(TabOrder order) {
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

// The size of the text in both windows, 8.25 points at 96 dots per inch; it fits the places.
inline constexpr int kTextPixels = 11;

inline QFont WindowFont(const QWidget& widget) {
    QFont font = widget.font();
    font.setPixelSize(kTextPixels);
    return font;
}

}  // namespace boreforge
