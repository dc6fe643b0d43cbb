// make_icons: draws an SVG picture at the sizes that the program shows, so that the program needs no SVG
// plugin.
#include <QCoreApplication>
#include <QImageReader>

#include <cstdio>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr char kUsage[] =
    R"(Usage: make_icons PICTURE.svg FOLDER SIZE...

Draws the picture at each size, in pixels, as FOLDER/PICTURE-SIZE.png. Needs
Qt's SVG plugin.

Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.
)";

// Draws the picture at a size and saves it. Returns what went wrong, or an empty text.
QString WriteIcon(const QString& picture, int size, const QString& path) {
    QImageReader reader(picture, "svg");
    reader.setScaledSize(QSize(size, size));
    const QImage image = reader.read();
    if (image.isNull()) return QString("can't read %1: %2").arg(picture, reader.errorString());
    QImage blank(image.size(), image.format());
    blank.fill(Qt::transparent);
    if (image == blank) return QString("%1 is empty at %2 pixels").arg(picture).arg(size);
    return image.save(path) ? QString() : QString("can't write %1").arg(path);
}

}  // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);  // finds Qt's plugins
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 4) {
        std::fputs(kUsage, stderr);
        return kWrongUsage;
    }
    const QString name = words[1].section('/', -1).section('.', 0, 0);
    for (const QString& size : words.mid(3)) {
        const QString path = QString("%1/%2-%3.png").arg(words[2], name, size);
        const QString failure = WriteIcon(words[1], size.toInt(), path);
        if (failure.isEmpty()) continue;
        std::fprintf(stderr, "make_icons: %s\n", qUtf8Printable(failure));
        return kFailed;
    }
    return kDone;
}
