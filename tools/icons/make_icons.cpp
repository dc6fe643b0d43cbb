// make_icons: draws an SVG picture at the sizes that the program shows, so that the program needn't read
// image files.
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageReader>

#include <cstdio>
#include <vector>

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr char kUsage[] =
    R"(Usage: make_icons PICTURE.svg FOLDER SIZE...

Draws the picture at each size, in pixels, and writes it to
FOLDER/PICTURE-SIZE.rgba: rows from the top, with the bytes red, green, blue
(each premultiplied) and alpha for each pixel. Needs Qt's SVG plugin.

Exit status: 0 done, 1 failed (the reason is on standard error), 2 wrong usage.
)";

bool IsEmpty(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 0) return false;
    return true;
}

// Draws the picture at a size and saves it. Returns what went wrong, or an empty text.
QString WriteIcon(const QString& picture, int size, const QString& path) {
    QImageReader reader(picture, "svg");
    reader.setScaledSize(QSize(size, size));
    const QImage image = reader.read();
    if (image.isNull()) return QString("can't read %1: %2").arg(picture, reader.errorString());
    if (IsEmpty(image)) return QString("%1 is empty at %2 pixels").arg(picture).arg(size);
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    QFile file(path);
    const bool written = file.open(QFile::WriteOnly) &&
                         file.write(reinterpret_cast<const char*>(pixels.constBits()),
                                    pixels.sizeInBytes()) == pixels.sizeInBytes() &&
                         file.flush();
    return written ? QString() : QString("can't write %1: %2").arg(path, file.errorString());
}

std::vector<int> ReadSizes(const QStringList& words) {
    constexpr int kMaxSize = 1024;  // pixels
    std::vector<int> sizes;
    for (const QString& word : words) {
        const int size = word.toInt();
        if (size < 1 || size > kMaxSize) return {};
        sizes.push_back(size);
    }
    return sizes;
}

}  // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);  // finds Qt's plugins
    const QStringList words = QCoreApplication::arguments();
    const std::vector<int> sizes = ReadSizes(words.mid(3));
    if (sizes.empty()) {
        std::fputs(kUsage, stderr);
        return kWrongUsage;
    }
    const QString name = words[1].section('/', -1).section('.', 0, 0);
    for (const int size : sizes) {
        const QString path = QString("%1/%2-%3.rgba").arg(words[2], name).arg(size);
        const QString failure = WriteIcon(words[1], size, path);
        if (failure.isEmpty()) continue;
        std::fprintf(stderr, "make_icons: %s\n", qUtf8Printable(failure));
        return kFailed;
    }
    return kDone;
}
