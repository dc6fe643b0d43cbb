#include "editor/window/Icons.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>
#include <iterator>

namespace boreforge {

namespace {

constexpr int kSizes[] = {BOREFORGE_ICON_SIZES};  // pixels, ascending; the build draws these

// Loads each size when it is first needed. A plain QIcon would load all of them, and the start would take a
// fifth longer.
class IconEngine : public QIconEngine {
  public:
    explicit IconEngine(const char* name) : name_(name) {}

    QIconEngine* clone() const override { return new IconEngine(*this); }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int size : kSizes)
            sizes.emplace_back(size, size);
        return sizes;
    }

    // `size` is in pixels of the screen.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const int drawn = *std::lower_bound(std::begin(kSizes), std::end(kSizes) - 1, size.width());
        if (!read_.availableSizes().contains(QSize(drawn, drawn)))
            read_.addFile(QString(":/icons/%1-%2.png").arg(name_).arg(drawn));
        return read_.pixmap(size, 1, mode, state);
    }

    void paint(QPainter* painter, const QRect& target, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(target,
                            pixmap(target.size() * painter->device()->devicePixelRatio(), mode, state));
    }

  private:
    const char* name_;
    QIcon read_;
};

}  // namespace

QIcon IconOf(const char* name) { return QIcon(new IconEngine(name)); }

}  // namespace boreforge
