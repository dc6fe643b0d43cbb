// Runs the picture program as a user's script would, and looks at what it drew.
#include <QImage>
#include <filesystem>

#include "support/CommandTest.h"

namespace boreforge {

using PictureTest = CommandTest;
const std::string kJob =
    "'" PROJECT "/tracks/small-circuit.zrtrack' o.3ds --color 255,0,255 --track-out t.zrtrack";
const std::string kMake = "'" PROGRAMS "/boreforge-batch' " + kJob;
const std::string kPicture = "unset DISPLAY WAYLAND_DISPLAY; '" PROGRAMS "/boreforge-picture' ";

// Nothing else has the tunnel's colour, or that of the rails.
bool IsTunnel(const QColor& c) { return c.red() > 1.4 * c.green() && c.blue() > 1.4 * c.green(); }
bool IsRail(const QColor& c) { return c.red() > 1.8 * c.green() && c.red() > 2.5 * c.blue(); }

TEST_F(PictureTest, ShowsTheTunnelAndTheTrackInEachView) {
    ASSERT_EQ(Run(kMake), 0);
    // The least and the most of the tunnel, and the least of the rails, as shares of the picture.
    const std::tuple<std::string, double, double, double> cases[] = {
        {"above", 0.02, 0.2, 0.0005}, {"side", 0.15, 0.6, 0.003}, {"inside", 0.8, 0.99, 0.01}};
    for (const auto& [view, least, most, leastRails] : cases) {
        const std::string options = " --track t.zrtrack --size 320x180 --view " + view;
        ASSERT_EQ(Run(kPicture + "o.3ds one.png" + options) + Run(kPicture + "o.3ds two.png" + options), 0);
        EXPECT_EQ(ReadBytes(In("one.png")), ReadBytes(In("two.png"))) << view;
        const QImage image(QString::fromStdString(In("one.png")));
        ASSERT_EQ(image.size(), QSize(320, 180));
        double tunnel = 0, rails = 0, around = 0;  // around: at the sides and the top of the picture
        for (int i = 0; i < 320 * 180; ++i) {
            const QColor color = image.pixelColor(i % 320, i / 320);
            tunnel += IsTunnel(color) / (320.0 * 180);
            rails += IsRail(color) / (320.0 * 180);
            around += IsTunnel(color) && (i < 320 || i % 320 % 319 == 0);
        }
        EXPECT_GT(tunnel, least) << view;
        EXPECT_LT(tunnel, most) << view;
        EXPECT_GT(rails, leastRails) << view;
        EXPECT_EQ(around == 320 + 2 * 179, view == "inside") << view << around;
    }
}

TEST_F(PictureTest, RefusesWhatIsDamagedAndLeavesTheOldPicture) {
    ASSERT_EQ(Run(kMake), 0);
    const Bytes old = {'o', 'l', 'd'};
    Bytes damaged = ReadBytes(In("o.3ds"));
    damaged[5] = 127;
    WriteBytes(In("d.3ds"), damaged);
    WriteBytes(In("p.png"), old);
    std::filesystem::copy_file(In("t.zrtrack"), In("track.png"));
    const auto expect = [&](const std::string& arguments, int status, const std::string& saying) {
        EXPECT_EQ(Run(kPicture + arguments), status) << saying;
        EXPECT_NE(Text("err").find(saying), std::string::npos) << Text("err");
        EXPECT_EQ(ReadBytes(In("p.png")), old) << saying;
        EXPECT_EQ(Listing().size(), 7u) << saying;
    };
    expect("d.3ds p.png", 1, "doesn't fit");
    expect("o.3ds p.png --view inside", 1, "needs the track");
    expect("o.3ds track.png", 1, "That File Is a Track!");
    expect("o.3ds ./o.3ds", 2, "doesn't end in .png");
    expect("o.3ds p.png --size 5x720", 2, "not '5x720'");
}

}  // namespace boreforge
