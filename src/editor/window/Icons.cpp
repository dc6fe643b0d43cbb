#include "editor/window/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QResource>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <iterator>

namespace boreforge {

namespace {

constexpr int kSizes[] = {BOREFORGE_ICON_SIZES};  // pixels, ascending; the build draws these

// Loads only the size that is shown, when it is first shown. The drawings are raw pixels: for an image file
// Qt would load all of its image plugins, and its own icon engine would read every file at once.
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
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        Read(std::min(size.width(), size.height()));
        if (mode == QIcon::Normal) return picture_;
        QStyleOption option;
        option.palette = QGuiApplication::palette();
        return QApplication::style()->generatedIconPixmap(mode, picture_, &option);
    }

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(place, pixmap(place.size() * painter->device()->devicePixelRatio(), mode, state));
    }

  private:
    // Takes the smallest drawing with at least `size` pixels, or the largest one, and scales it down if
    // needed.
    void Read(int size) {
        if (picture_.width() == size) return;
        const int drawn = *std::lower_bound(std::begin(kSizes), std::end(kSizes) - 1, size);
        const QByteArray pixels =
            QResource(QString(":/icons/%1-%2.rgba").arg(name_).arg(drawn)).uncompressedData();
        picture_ = QPixmap::fromImage(QImage(reinterpret_cast<const uchar*>(pixels.constData()), drawn, drawn,
                                             QImage::Format_RGBA8888_Premultiplied));
        if (size < drawn) picture_ = picture_.scaledToWidth(size, Qt::SmoothTransformation);
    }

    const char* name_;
    QPixmap picture_;
};

}  // namespace

QIcon IconOf(const char* name) { return QIcon(new IconEngine(name)); }

}  // namespace boreforge
