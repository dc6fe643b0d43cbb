#include "dialogs/ControlTable.h"

#include <QEvent>
#include <QFontMetrics>
#include <QWindow>

#include <algorithm>

namespace boreforge {

namespace {

QSize SizeWith(const QFont& font, const TextPlace& place) {
    constexpr int kNoLimit = 1000;
    const QRect room(0, 0, place.room.width(), kNoLimit);
    return QFontMetrics(font).boundingRect(room, place.wraps ? Qt::TextWordWrap : 0, place.text).size();
}

bool Fits(const QFont& font, const TextPlace& place) {
    const QSize size = SizeWith(font, place);
    return size.width() <= place.room.width() && (!place.wraps || size.height() <= place.room.height());
}

class FrameCorrection : public QObject {
  public:
    FrameCorrection(QWidget* window, const QRect& area, const QRect& screen)
        : QObject(window), area_(area), screen_(screen) {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint) return false;
        auto* const window = static_cast<QWidget*>(watched);
        const QMargins frame = window->windowHandle()->frameMargins();
        window->move(CentredCorner(window->size(), frame, area_, screen_));
        window->removeEventFilter(this);
        deleteLater();
        return false;
    }

  private:
    QRect area_, screen_;
};

}  // namespace

QFont WindowFont(const QWidget& widget) {
    constexpr int kTextPixels = 11;  // 8.25 points at 96 dots per inch
    QFont font = widget.font();
    font.setPixelSize(kTextPixels);
    return font;
}

void Place(QWidget* control, const ControlPlace& place) {
    control->setObjectName(QString::fromLatin1(place.name));
    control->setGeometry(PixelsOf(place.left), PixelsOf(place.top), PixelsOf(place.width),
                         PixelsOf(place.height));
    control->setFont(WindowFont(*control));
}

void ApplyTabOrder(TabOrder order) {
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

void FitTexts(const std::vector<TextPlace>& places) {
    constexpr int kMinStretch = 60, kStep = 2;  // percent
    // Each stretch that is tried costs a font lookup, so start with a guess from the widths.
    int stretch = 100;
    for (const TextPlace& place : places) {
        const int width = SizeWith(place.control->font(), place).width();
        if (!place.wraps && width > place.room.width())
            stretch = std::min(stretch, 100 * place.room.width() / width / kStep * kStep);
    }
    const auto stretched = [&](const TextPlace& place) {
        QFont font = place.control->font();
        font.setStretch(stretch);
        return font;
    };
    stretch = std::max(stretch, kMinStretch);
    const auto fits = [&](const TextPlace& place) { return Fits(stretched(place), place); };
    while (stretch > kMinStretch && !std::all_of(places.begin(), places.end(), fits))
        stretch -= kStep;
    for (const TextPlace& place : places)
        place.control->setFont(stretched(place));
}

QPoint CentredCorner(QSize inside, const QMargins& frame, const QRect& area, const QRect& screen) {
    QRect place(QPoint(), inside.grownBy(frame));
    place.moveCenter(area.center());
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    return {std::max(place.left(), screen.left()), std::max(place.top(), screen.top())};
}

void CentreFrame(QWidget* window, const QRect& area, const QRect& screen, const QMargins& frame) {
    window->move(CentredCorner(window->size(), frame, area, screen));
    new FrameCorrection(window, area, screen);
}

}  // namespace boreforge
