#include <QImage>

#include <set>
#include <vector>

#include "UiTest.h"
#include "editor/window/ImageSurface.h"

using namespace boreforge;

// Screens on which a pixel of the canvas is not one pixel of the screen.
struct Screen {
    double density;
    int thickness;  // of a thin line, device pixels
};
static constexpr Screen kScreens[] = {{1.25, 1}, {1.5, 2}, {1.75, 2}, {2, 2}, {2.5, 3}, {3, 3}};

// A run of pixels of one colour in a row of the image.
struct Span {
    int first, last;
};
static std::vector<Span> SpansOf(const QImage& image, int row, const QColor& color) {
    std::vector<Span> spans;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, row) != color) continue;
        if (spans.empty() || spans.back().last != x - 1) spans.push_back({x, x});
        spans.back().last = x;
    }
    return spans;
}

TEST(Picture, ThinLinesAreEquallyThickWhereverTheyAre) {
    constexpr ColorRGB kColor{32, 32, 32};
    for (const Screen& screen : kScreens) {
        QImage image;
        ImageSurface surface(image, QSize(400, 400), screen.density);
        surface.Clear();
        for (float at = 5; at < 390; at += 10.3f) {
            surface.Line({at, 0}, {at, 190}, kColor);
            surface.Line({0, at}, {190, at}, kColor);
        }
        std::set<int> thicknesses;
        for (const QImage& turned : {image, image.transformed(QTransform().rotate(90))})
            for (const Span& span : SpansOf(turned, qRound(2 * screen.density), QColor(32, 32, 32)))
                thicknesses.insert(span.last - span.first + 1);
        EXPECT_EQ(thicknesses, std::set{screen.thickness}) << screen.density;
    }
}
