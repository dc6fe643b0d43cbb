#include <QImage>

#include <cmath>
#include <set>

#include "UiTest.h"
#include "editor/window/ImageSurface.h"

using namespace boreforge;

// The shape on a canvas with the origin at (390, 240).
static QImage Paint(QSize size, double density) {
    QImage image;
    ShapeView = {0, 0, 390, 240};
    ImageSurface surface(image, size, density);
    DrawTunnelShape(surface, {});
    return image;
}

TEST_F(UiTest, ThePictureHasThePixelsOfTheScreen) {
    const QImage image = Paint(QSize(781, 481), 2);
    EXPECT_EQ(image.size(), QSize(1562, 962));
    const struct {
        const char* what;
        int x, y;  // of 781 by 481
        const char* color;
    } probes[] = {{"background", 10, 10, "#000000"},
                  {"origin", 393, 243, "#c0c0c0"},
                  {"beside the origin", 398, 248, "#000000"},
                  {"grid line", 340, 10, "#202020"},
                  {"inside node", 487, 286, "#8080ff"}};
    for (const auto& [what, x, y, color] : probes)
        EXPECT_EQ(image.pixelColor(2 * x, 2 * y), QColor(color)) << what;
}

TEST_F(UiTest, LinesThatLeaveThePictureAreClipped) {
    TunnelShape.InsideNodes = {{-10000, -10000, 0}, {10000, 10000, 0}, {0, 1, 0}, {1e30f, 1, 0}};
    TunnelShape.OutsideNodes = {{NAN, NAN, 0}, {INFINITY, -INFINITY, 0}, {-1e30f, 1e30f, 0}, {0.5f, NAN, 0}};
    TunnelShape.SelectedNode = 2;
    TunnelShape.SelectedIsOutside = kFalse;
    const QImage image = Paint(QSize(781, 481), 1);
    EXPECT_EQ(image.pixelColor(465, 165), QColor("#0000ff")) << "through the origin, from far off to far off";
    EXPECT_EQ(image.pixelColor(700, 190), QColor("#ff8000")) << "to the right without end";
    EXPECT_TRUE(Paint(QSize(781, 0), 2).isNull());
    EXPECT_TRUE(Paint(QSize(0, 481), 1).isNull());
}

static int PixelsInRow(const QImage& image, int row, QRgb color) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x)
        count += image.pixel(x, row) == color ? 1 : 0;
    return count;
}

TEST(Picture, ThinLinesAreEquallyThickWhereverTheyAre) {
    const struct {
        double density;
        int thickness;  // device pixels
    } screens[] = {{1.25, 1}, {1.5, 2}, {1.75, 2}, {2, 2}, {2.5, 3}, {3, 3}};
    for (const auto& [density, thickness] : screens)
        for (float at = 5; at < 390; at += 10.3f) {
            SCOPED_TRACE(testing::Message() << density << ' ' << at);
            QImage image;
            ImageSurface surface(image, QSize(400, 400), density);
            surface.Clear();
            surface.Line({at, 0}, {at, 190}, {32, 32, 32});
            surface.Line({0, at}, {190, at}, {32, 32, 32});
            const QImage turned = image.transformed(QTransform().rotate(90));
            EXPECT_EQ(PixelsInRow(image, qRound(2 * density), qRgb(32, 32, 32)), thickness);
            EXPECT_EQ(PixelsInRow(turned, qRound(2 * density), qRgb(32, 32, 32)), thickness);
        }
}
