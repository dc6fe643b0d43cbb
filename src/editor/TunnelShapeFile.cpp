#include "editor/TunnelShapeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <tuple>

#include "base/FileTags.h"
#include "editor/TunnelShape.h"
#include "editor/modFileIO.h"

namespace boreforge {

namespace {

constexpr std::int64_t kHeadBytes = 8;
constexpr std::int64_t kNodeBytes = 24;

Vector3D GetPoint(std::int32_t& position) {
    Vector3D point;
    point.x = GetFloat32(position);
    point.y = GetFloat32(position);
    point.z = GetFloat32(position);
    return point;
}

void PutPoint(std::int32_t& position, const Vector3D& point) {
    PutFloat32(position, point.x);
    PutFloat32(position, point.y);
    PutFloat32(position, point.z);
}

// Fills the empty shape from FileBuffer.
Outcome GetShape() {
    const auto length = static_cast<std::int64_t>(FileBuffer.size()) - 1;  // the buffer has one byte more
    const std::string end = "It ends at byte " + std::to_string(length);
    std::int32_t position = 0;
    if (GetTag(position) != kShapeTag) return Failure{.reason = "It is not a tunnel shape."};
    if (length < kHeadBytes) return Failure{.reason = end + ", within the number of its nodes."};
    const std::int32_t count = GetInt32(position);
    if (kHeadBytes + kNodeBytes * count > length) {
        const std::string nodes = std::to_string(count) + (count == 1 ? " node." : " nodes.");
        return Failure{.reason = end + ", which is too early for " + nodes};
    }
    for (std::int32_t i = 0; i < count; ++i) {
        AddShapeNode(GetPoint(position));
        TunnelShape.OutsideNodes.back() = GetPoint(position);
    }
    return {};
}

}  // namespace

Outcome LoadTunnelShape(const std::string& path) {
    const Failure noMemory = SystemFailure(ENOMEM);
    const Outcome read = CatchingOutOfMemory([&] { return ReadFileToBuffer(path); }, noMemory);
    if (!read) return read;
    ResetTunnelShape();
    const Outcome good = CatchingOutOfMemory(GetShape, noMemory);
    if (!good) ResetTunnelShape();
    return good;
}

void LoadSampleShape(std::string_view name) {
    ResetTunnelShape();
    const auto sample = std::ranges::find(kSampleShapes, name, &SampleShape::name);
    if (sample == kSampleShapes.end()) return;
    FileBuffer.assign(sample->file.begin(), sample->file.end());
    FileBuffer.push_back(0);
    std::ignore = GetShape();
}

Outcome SaveTunnelShape(const std::string& path) {
    ClearFileBuffer();
    std::int32_t position = 0;
    PutTag(position, kShapeTag);
    PutInt32(position, TunnelShape.NodeCount());
    for (std::size_t i = 0; i < TunnelShape.InsideNodes.size(); ++i) {
        PutPoint(position, TunnelShape.InsideNodes[i]);
        PutPoint(position, TunnelShape.OutsideNodes[i]);
    }
    return WriteBufferToFile(path);
}

}  // namespace boreforge
