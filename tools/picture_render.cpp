#include "picture_render.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <functional>
#include <system_error>
#include <thread>

#include "base/Values.h"
#include "picture_raster.h"

namespace boreforge {

namespace {

constexpr int kSamples = 4;             // along a pixel's side
constexpr double kNearest = 0.05;       // units before the eye that are not drawn
constexpr double kThinnestRail = 1.25;  // pixels

// A band is some rows of pixels whose samples are held at once, for each thread: about so many samples, but
// enough bands for all threads, and not too many, since each of them is a pass over the object.
constexpr int kBandSamples = 1 << 21, kLeastBands = 8, kMostBands = 64;
constexpr unsigned kMostThreads = 4;

// What is nearest in each sample of some rows: the object, and before or behind it the rails.
struct Band {
    RasterWindow window;
    std::vector<float> objectW, railW;
    std::vector<std::uint32_t> face, railSide;  // the index; that of the piece times 4 plus the side

    // Empties the samples of these rows.
    void Start(const RasterWindow& rows) {
        window = rows;
        const std::size_t count =
            static_cast<std::size_t>(rows.columns) * static_cast<std::size_t>(rows.rows);
        objectW.assign(count, 0);
        railW.assign(count, 0);
        face.assign(count, FaceLook::kNone);
        railSide.assign(count, 0);
    }
    std::size_t Line(int row) const {
        return static_cast<std::size_t>(row - window.top) * static_cast<std::size_t>(window.columns);
    }
};

class Renderer {
  public:
    explicit Renderer(const PictureScene& scene) : scene_(scene), camera_(scene.Camera), shader_(scene) {
        seen_.reserve(scene.Object.Points.size());
        for (const Vector3D& point : scene.Object.Points) {
            const Vec seen = camera_.Seen(ToVec(point));
            seen_.push_back(
                {static_cast<float>(seen.x), static_cast<float>(seen.y), static_cast<float>(seen.z)});
        }
    }

    // Each thread draws band after band. All memory is taken before the first of them starts.
    void Render(std::vector<std::uint8_t>& pixels) {
        const PictureSize& size = camera_.Size;
        const int columns = size.Width * kSamples;
        const int bandRows = std::clamp(kBandSamples / (columns * kSamples), 1 + size.Height / kMostBands,
                                        1 + size.Height / kLeastBands);
        std::vector<Band> bands(std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads));
        for (Band& band : bands)
            band.Start({columns, 0, bandRows * kSamples});
        std::atomic<int> next = 0;
        const auto work = [&](Band& band) {
            for (int top = bandRows * next++; top < size.Height; top = bandRows * next++) {
                const int rows = std::min(bandRows, size.Height - top);
                band.Start({columns, top * kSamples, rows * kSamples});
                DrawObject(band);
                DrawRails(band);
                ShadeBand(band, &pixels[3 * std::size_t(top) * std::size_t(size.Width)]);
            }
        };
        std::vector<std::jthread> helpers;
        helpers.reserve(bands.size() - 1);
        try {
            for (std::size_t i = 1; i < bands.size(); ++i)
                helpers.emplace_back(work, std::ref(bands[i]));
        } catch (const std::system_error&) {
            // The threads that there are do it all.
        }
        work(bands[0]);
    }

  private:
    Vec SeenPoint(std::uint32_t index) const { return ToVec(seen_[index]); }

    // A span that keeps the nearest surface, and its index, of each sample.
    static auto KeepNearest(const Band& band, std::vector<float>& nearest,
                            std::vector<std::uint32_t>& indices, std::uint32_t index) {
        return [&, index](int row, int first, int last, double w, double slope) {
            float* const lineW = &nearest[band.Line(row)];
            std::uint32_t* const line = &indices[band.Line(row)];
            for (int x = first; x <= last; ++x, w += slope) {
                if (!(w > lineW[x])) continue;
                lineW[x] = static_cast<float>(w);
                line[x] = index;
            }
        };
    }

    void DrawObject(Band& band) const {
        for (std::uint32_t i = 0; i < scene_.Object.Faces.size(); ++i) {
            const ObjectFace& face = scene_.Object.Faces[i];
            DrawTriangle({SeenPoint(face.a), SeenPoint(face.b), SeenPoint(face.c)}, band.window,
                         KeepNearest(band, band.objectW, band.face, i));
        }
    }

    // Cuts off what is not ahead of the eye.
    template <class Span>
    void DrawTriangle(const std::array<Vec, 3>& corners, const RasterWindow& window, Span span) const {
        std::array<RasterPoint, 4> places;
        std::size_t count = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec& here = corners[i];
            const Vec& next = corners[(i + 1) % 3];
            if (here.z >= kNearest) places[count++] = camera_.Place(here, kSamples);
            if ((here.z >= kNearest) != (next.z >= kNearest))
                places[count++] =
                    camera_.Place(Mix(here, next, (kNearest - here.z) / (next.z - here.z)), kSamples);
        }
        for (std::size_t i = 2; i < count; ++i)
            ForEachSpan(places[0], places[i - 1], places[i], window, span);
    }

    // Far away, where a rail is thinner than that, it is drawn as a line of the least width that can be seen.
    void DrawRails(Band& band) const {
        for (std::uint32_t i = 0; i < scene_.Rails.size(); ++i) {
            const RailPiece& piece = scene_.Rails[i];
            const Vec from = camera_.Seen(piece.from), to = camera_.Seen(piece.to);
            if (from.z < kNearest && to.z < kNearest) continue;
            const double pixels = 2 * Length(piece.aside) * camera_.Focal / std::max(from.z, to.z);
            if (pixels >= kThinnestRail || std::min(from.z, to.z) < kNearest)
                DrawBar(piece, 4 * i, band);
            else
                DrawLine(camera_.Place(from, kSamples), camera_.Place(to, kSamples), 4 * i, band);
        }
    }

    void DrawBar(const RailPiece& piece, std::uint32_t index, Band& band) const {
        for (std::uint32_t side = 0; side < 4; ++side) {
            const Vec out = SideOf(piece, side), along = SideOf(piece, (side + 1) % 4);
            const Vec one = out + along, other = out - along;
            const auto span = KeepNearest(band, band.railW, band.railSide, index + side);
            const Vec a = camera_.Seen(piece.from + one), b = camera_.Seen(piece.from + other);
            const Vec c = camera_.Seen(piece.to + other), d = camera_.Seen(piece.to + one);
            DrawTriangle({a, b, c}, band.window, span);
            DrawTriangle({a, c, d}, band.window, span);
        }
    }

    void DrawLine(const RasterPoint& from, const RasterPoint& to, std::uint32_t index, Band& band) const {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (!(length > 0)) return;
        const double half = 0.5 * kSamples * kThinnestRail / length;
        const double acrossX = (from.y - to.y) * half, acrossY = (to.x - from.x) * half;
        const auto corner = [&](const RasterPoint& end, double side) {
            return RasterPoint{end.x + acrossX * side, end.y + acrossY * side, end.w};
        };
        const auto span = KeepNearest(band, band.railW, band.railSide, index);
        const RasterPoint left = corner(from, 1), right = corner(to, -1);
        ForEachSpan(left, corner(from, -1), right, band.window, span);
        ForEachSpan(left, right, corner(to, 1), band.window, span);
    }

    Vec ShadeSample(const Band& band, std::size_t sample, const Vec& ray, FaceLook& look) const {
        const double object = band.objectW[sample], rail = band.railW[sample];
        if (rail > 0 && rail >= object) {
            const std::uint32_t index = band.railSide[sample];
            return shader_.Rail(scene_.Rails[index / 4], index % 4, ray * (1 / rail));
        }
        if (!(object > 0)) return shader_.Background(ray);
        const Vec face = shader_.Face(band.face[sample], ray * (1 / object), look);
        return rail > 0 ? PictureShader::ThroughFace(face, 1 / rail - 1 / object) : face;
    }

    void ShadeBand(const Band& band, std::uint8_t* pixel) const {
        FaceLook look;
        for (int row = 0; row < band.window.rows; row += kSamples)
            for (int column = 0; column < band.window.columns; column += kSamples) {
                Vec light;
                for (int y = row; y < row + kSamples; ++y)
                    for (int x = column; x < column + kSamples; ++x) {
                        const Vec ray =
                            camera_.Ray((x + 0.5) / kSamples, (band.window.top + y + 0.5) / kSamples);
                        const std::size_t sample = static_cast<std::size_t>(y) * band.window.columns + x;
                        const Vec one = ShadeSample(band, sample, ray, look);
                        // Within a pixel nothing is brighter than white, so that bright edges stay smooth.
                        light = light + Vec{std::min(1.0, one.x), std::min(1.0, one.y), std::min(1.0, one.z)};
                    }
                for (const double channel : {light.x, light.y, light.z})
                    *pixel++ =
                        static_cast<std::uint8_t>(RoundToEven(std::sqrt(channel) * (255.0 / kSamples)));
            }
    }

    const PictureScene& scene_;
    const PictureCamera& camera_;
    PictureShader shader_;
    std::vector<Vector3D> seen_;  // the object's points in the camera's axes
};

}  // namespace

std::vector<std::uint8_t> RenderPicture(const PictureScene& scene) {
    std::vector<std::uint8_t> pixels(3 * std::size_t(scene.Camera.Size.Width) * scene.Camera.Size.Height);
    Renderer(scene).Render(pixels);
    return pixels;
}

}  // namespace boreforge
