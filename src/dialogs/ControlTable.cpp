#include "dialogs/ControlTable.h"

#include <QEvent>
#include <QFontMetrics>
#include <QWindow>

#include <algorithm>

namespace boreforge {

namespace {

QSize SizeWith(const QFont& font, const TextRoom& text) {
    constexpr int kNoLimit = 1000;
    const QRect room(0, 0, text.room.width(), kNoLimit);
    return QFontMetrics(font).boundingRect(room, text.wraps ? Qt::TextWordWrap : 0, text.text).size();
}

bool Fits(const QFont& font, const TextRoom& text) {
    const QSize size = SizeWith(font, text);
    return size.width() <= text.room.width() && (!text.wraps || size.height() <= text.room.height());
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

void SetGeometry(QWidget* control, const ControlGeometry& geometry) {
    control->setObjectName(QString::fromLatin1(geometry.name));
    control->setGeometry(PixelsOf(geometry.left), PixelsOf(geometry.top), PixelsOf(geometry.width),
                         PixelsOf(geometry.height));
    control->setFont(WindowFont(*control));
}

void ApplyTabOrder(TabOrder order) {
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

void FitTexts(const std::vector<TextRoom>& texts) {
    constexpr int kMinStretch = 60, kStep = 2;  // percent
    int stretch = 100;
    const auto stretched = [&](const TextRoom& text) {
        QFont font = text.control->font();
        font.setStretch(stretch);
        return font;
    };
    const auto fits = [&](const TextRoom& text) { return Fits(stretched(text), text); };
    while (stretch > kMinStretch && !std::all_of(texts.begin(), texts.end(), fits))
        stretch -= kStep;
    for (const TextRoom& text : texts)
        text.control->setFont(stretched(text));
}

QPoint CentredCorner(QSize inside, const QMargins& frame, const QRect& area, const QRect& screen) {
    QRect whole(QPoint(), inside.grownBy(frame));
    whole.moveCenter(area.center());
    whole.moveRight(std::min(whole.right(), screen.right()));
    whole.moveBottom(std::min(whole.bottom(), screen.bottom()));
    return {std::max(whole.left(), screen.left()), std::max(whole.top(), screen.top())};
}

void CentreFrame(QWidget* window, const QRect& area, const QRect& screen, const QMargins& frame) {
    window->move(CentredCorner(window->size(), frame, area, screen));
    new FrameCorrection(window, area, screen);
}

}  // namespace boreforge
