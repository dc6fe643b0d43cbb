// The viewer's window and its pictures, on a screen, with real files.
#include <QApplication>
#include <QImage>
#include <QMimeData>
#include <QQuickWindow>
#include <QtTest>

#include <filesystem>

#include "editor/TunnelShape.h"
#include "editor/TunnelShapeFile.h"
#include "support/CommandTest.h"
#include "view/ViewWindow.h"

namespace boreforge {

namespace {

const std::string kBatch = "'" PROGRAMS "/boreforge-batch' '" PROJECT "/tracks/small-circuit.zrtrack' ";
constexpr int kPatience = 60'000;  // milliseconds, for what takes a moment on an idle machine
const std::string kView = "'" PROGRAMS "/boreforge-view' ";

// Nothing else has the tunnel's colour, or that of the rails or of the backs of faces.
bool IsTunnel(const QColor& c) { return c.red() > 1.3 * c.green() && c.blue() > 1.3 * c.green(); }
bool IsRail(const QColor& c) {
    return c.red() > 1.8 * c.green() && c.red() > 2.5 * c.blue() && c.green() > 20;
}
bool IsBack(const QColor& c) { return c.red() > 200 && c.green() < 20 && c.blue() < 20; }

double ShareOf(const QImage& image, bool (*is)(const QColor&)) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += is(image.pixelColor(x, y)) ? 1 : 0;
    return double(count) / image.width() / image.height();
}

QString TextOf(const ViewScene& scene, const char* property) {
    return scene.properties.value(property).toString();
}

class ViewTest : public CommandTest {
  protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_EQ(Run(kBatch + "o.3ds --color 255,0,255 --track-out t.zrtrack"), 0);
    }
};

class ViewWindowTest : public ViewTest {
  protected:
    void SetUp() override {
        ViewTest::SetUp();
        ASSERT_TRUE(scene.OpenObject(In("o.3ds")));
        window = std::make_unique<ViewWindow>(scene);
        window->resize(640, 400);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), kPatience));
    }
    ViewScene scene;
    std::unique_ptr<ViewWindow> window;
};

}  // namespace

TEST_F(ViewTest, SavesTheTunnelAndTheTrackFromEachSide) {
    struct Case {
        const char* from;
        double leastTunnel, mostTunnel, leastRails;  // shares of the picture
    };
    const Case cases[] = {
        {"above", 0.01, 0.2, 0.0005}, {"side", 0.15, 0.6, 0.003}, {"inside", 0.8, 0.99, 0.01}};
    for (const Case& c : cases) {
        ASSERT_EQ(Run(kView + "o.3ds --track t.zrtrack --save p.png --size 320x180 --from " + c.from), 0)
            << Text("err");
        const QImage image(QString::fromStdString(In("p.png")));
        ASSERT_EQ(image.size(), QSize(320, 180));
        EXPECT_GT(ShareOf(image, IsTunnel), c.leastTunnel) << c.from;
        EXPECT_LT(ShareOf(image, IsTunnel), c.mostTunnel) << c.from;
        EXPECT_GT(ShareOf(image, IsRail), c.leastRails) << c.from;
        EXPECT_EQ(ShareOf(image, IsBack), 0) << c.from;
    }
}

TEST_F(ViewTest, ShowsWallsThatFaceTheWrongWayInRed) {
    MakePresetShape(kPresetBox);
    MirrorTunnelShape();  // now it runs clockwise
    ASSERT_TRUE(SaveTunnelShape(In("s.zrbf")));
    ASSERT_EQ(Run(kBatch + "o.3ds --no-track --shape s.zrbf"), 0);
    ASSERT_EQ(Run(kView + "o.3ds --save p.png --size 320x180"), 0) << Text("err");
    EXPECT_GT(ShareOf(QImage(QString::fromStdString(In("p.png"))), IsBack), 0.03);
    ViewScene scene;
    ASSERT_TRUE(scene.OpenObject(In("o.3ds")));
    EXPECT_TRUE(TextOf(scene, "summary").endsWith("walls face the wrong way"));
}

TEST_F(ViewTest, ShowsNoBacksOfTransparentAndDoubleSidedWalls) {
    ViewScene scene;
    for (const char* walls : {"--transparency 50", "--double-sided"}) {
        ASSERT_EQ(Run(kBatch + "b.3ds --no-track " + walls), 0);
        scene.Switch("backFaces", true);
        ASSERT_TRUE(scene.OpenObject(In("b.3ds")));
        EXPECT_FALSE(scene.IsOn("backFaces")) << walls;
        ASSERT_TRUE(scene.OpenObject(In("o.3ds")));
        EXPECT_TRUE(scene.IsOn("backFaces"));
    }
}

TEST_F(ViewTest, AWindowWithoutAnObjectIsDrawn) {
    ViewScene scene;
    ViewWindow window(scene);
    window.resize(640, 400);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, kPatience));
    EXPECT_GT(window.grabWindow().pixelColor(10, 10).blue(), 150) << "the sky";
}

TEST_F(ViewWindowTest, DragTurnsAndWheelZooms) {
    const CameraPose before = scene.Pose();
    QTest::mousePress(window.get(), Qt::LeftButton, {}, {300, 200});
    QTest::mouseMove(window.get(), {400, 200});
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, {400, 200});
    const CameraPose turned = scene.Pose();
    EXPECT_LT(Dot(before.forward, turned.forward), 0.95);
    QTest::keyClick(window.get(), Qt::Key_Plus);
    EXPECT_GT(Dot(scene.Pose().eye - turned.eye, turned.forward), 1);
    QTest::keyClick(window.get(), Qt::Key_Home);
    EXPECT_NEAR(Length(scene.Pose().eye - before.eye), 0, 1e-6);
}

TEST_F(ViewWindowTest, RidesAlongTheTrackThatIsDropped) {
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(In("t.zrtrack")))});
    QDropEvent drop({100, 100}, Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton, Qt::ShiftModifier);
    drop.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "after a move the file might be removed";
    QTest::keyClick(window.get(), Qt::Key_Space);
    const CameraPose start = scene.Pose();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Length(scene.Pose().eye - start.eye) > 1; }, kPatience));
    EXPECT_GT(ShareOf(window->grabWindow(), IsRail), 0.01) << "the tunnel is far away, the rails are near";
    EXPECT_GT(scene.properties.value("clipNear").toFloat(), 0.3) << "or depths far away fall together";
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(scene.camera.CurrentRide());
}

TEST_F(ViewWindowTest, APictureAtRestIsFine) {
    EXPECT_FALSE(scene.IsOn("fine"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return scene.IsOn("fine"); }, kPatience));
}

TEST_F(ViewWindowTest, ANewExportShowsUpWithTheCameraWhereItWas) {
    scene.camera.Drag(50, 20, false);
    const CameraPose before = scene.Pose();
    const QString summary = TextOf(scene, "summary");
    ASSERT_EQ(Run(kBatch + "o.3ds --detail extreme --track-out t.zrtrack"), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(scene, "summary") != summary; }, kPatience));
    EXPECT_EQ(Length(scene.Pose().eye - before.eye), 0);
}

TEST_F(ViewWindowTest, AVanishedFileLeavesThePictureAndComesBack) {
    const QString summary = TextOf(scene, "summary");
    std::filesystem::rename(In("o.3ds"), In("away.3ds"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !TextOf(scene, "objectProblem").isEmpty(); }, kPatience));
    EXPECT_EQ(TextOf(scene, "summary"), summary);
    std::filesystem::rename(In("away.3ds"), In("o.3ds"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return TextOf(scene, "objectProblem").isEmpty(); }, kPatience));
}

}  // namespace boreforge

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
