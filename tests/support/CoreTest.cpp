#include "support/CoreTest.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include "editor/ShapeHistory.h"
#include "editor/ShapeInput.h"
#include "editor/TunnelShape.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

CoreTest::CoreTest() {
    std::random_device random;
    do
        folder_ =
            std::filesystem::temp_directory_path().string() + "/boreforge-test-" + std::to_string(random());
    while (!std::filesystem::create_directory(folder_));
    fileCalls = SystemFileCalls();
    ResetTrackFile();
    TrackFilePath.clear();
    TrackLoaded = TrackTraced = false;
    TracedSegments.clear();
    ResetModel();
    BeginObject("", 0, false, false);
    TunnelShape = {};
    ShapeHistory = {};
    Wheel = {};
}

CoreTest::~CoreTest() {
    fileCalls = SystemFileCalls();
    std::filesystem::remove_all(folder_);
}

std::vector<std::string> CoreTest::Listing() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        names.insert(entry.path().filename().string());
    return {names.begin(), names.end()};
}

testing::AssertionResult Contains(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "\"" << part << "\" is not in \"" << text << '"';
}

Bytes ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return {text.begin(), text.end()};
}

void WriteBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.flush().good()) << path;
}

void Put32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes.at(at + i) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

Bytes FromHex(const std::string& digits) {
    Bytes bytes;
    bool text = false;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (digits[i] == '\'')
            text = !text;
        else if (text)
            bytes.push_back(static_cast<std::uint8_t>(digits[i]));
        else if (digits[i] != ' ')
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i++, 2), nullptr, 16)));
    }
    return bytes;
}

TrackBezierNode Node(const Vector3D& p, const Vector3D& back, const Vector3D& forth, float roll,
                     bool rollFlag) {
    const auto moved = [&p](const Vector3D& by) { return Vector3D{p.x + by.x, p.y + by.y, p.z + by.z}; };
    return {p, moved(back), moved(forth), roll, kFalse, ToTruth(rollFlag), kFalse};
}

void MakeTrack(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels) {
    ResetTrackFile();
    TrackFile.BezierNodes.assign(nodes.begin(), nodes.end());
    TrackFile.Segments.resize(nodes.size());
    for (std::size_t i = 0; i < tunnels.size(); ++i)
        TrackFile.Segments.at(i).IsTunnel = ToTruth(tunnels[i] == 'T');
}

void MakeLargeShape() {
    ResetTunnelShape();
    for (int i = 0; i < 300; ++i)
        AddShapeNode({static_cast<float>(i % 25), static_cast<float>(i) / 25, 0});
}

std::vector<TrackBezierNode> WindingCircuit() {
    return {Node({210, 40, -95}, {-3, 0, 9}, {4, 1, -12}),
            Node({222, 46, -120}, {2, -4, 8}, {-2, 4, -8}, 0.6f, true),
            Node({214, 52, -141}, {7, -1, 5}, {-14, 2, -10}, -0.35f),
            Node({188, 49, -139}, {6, 3, -7}, {-3, -1.5f, 3.5f}, -0.8f, true),
            Node({176, 43, -118}, {-1, 2, -9}, {2, -4, 18}, 0.9f),
            Node({190, 38, -92}, {-9, 0, -5}, {5, 0, 3}, 0.1f)};
}

}  // namespace boreforge
