#include "support/CoreTest.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/Message.h"
#include "editor/TunnelShape.h"
#include "editor/modFileIO.h"
#include "export3ds/mSave3DSObject.h"
#include "job/mMain.h"
#include "platform/FileCalls.h"
#include "tracing/mZR_TraceTrack.h"
#include "trackfile/mZephyrail_TrackIO_1_3.h"

namespace boreforge {

namespace {

std::vector<std::string> shown;

void Catch(const std::string& text, const std::string& title, MessageIcon icon) {
    shown.push_back((icon == MessageIcon::Information ? "(i) " : "(!) ") + title + "\n" + text);
}

}  // namespace

CoreTest::CoreTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "boreforge-test-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    shown.clear();
    SetMessageHook(Catch);
    fileCalls = SystemFileCalls();
    ResetTrackFile();
    TrackFilePath.clear();
    TrackLoaded = false;
    TracedSegments.clear();
    TraceUpperIndex = -1;
    ResetModel();
    ObjectBuffer = {};
    BeginObject("", 0, false, false);
    TunnelShape = {};
    ClearFileBuffer();
}

CoreTest::~CoreTest() {
    SetMessageHook(nullptr);
    fileCalls = SystemFileCalls();
    std::filesystem::remove_all(folder_);
}

std::vector<std::string> CoreTest::Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

const std::vector<std::string>& CoreTest::Shown() { return shown; }

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

TrackBezierNode Node(const Vector3D& position, const Vector3D& back, const Vector3D& forth, float roll,
                     bool rollFlag) {
    const auto moved = [&](const Vector3D& by) {
        return Vector3D{position.x + by.x, position.y + by.y, position.z + by.z};
    };
    TrackBezierNode node;
    node.Position = position;
    node.ControlIn = moved(back);
    node.ControlOut = moved(forth);
    node.Roll = roll;
    node.RollFlag = ToTruth(rollFlag);
    return node;
}

void MakeTrack(const std::vector<TrackBezierNode>& nodes, const std::string& tunnels) {
    ResetTrackFile();
    TrackFile.BezierNodes = nodes;
    TrackFile.Segments.resize(nodes.size());
    for (std::size_t i = 0; i < tunnels.size(); ++i)
        TrackFile.Segments.at(i).IsTunnel = ToTruth(tunnels[i] == 'T');
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
