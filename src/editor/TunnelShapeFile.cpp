#include "editor/TunnelShapeFile.h"

#include <cstdint>
#include <string_view>

#include "editor/TunnelShape.h"
#include "editor/modFileIO.h"
#include "platform/FileFailure.h"
#include "platform/Files.h"

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
bool GetShape() {
    const auto length = static_cast<std::int64_t>(FileBuffer.size()) - 1;  // the buffer has one byte more
    const std::string end = "It ends at byte " + std::to_string(length);
    if (length < kHeadBytes) return FailAsDamaged(end + ", within the number of its nodes.");
    std::int32_t position = 0;
    if (GetTag(position) != kShapeBeginning) return Fail(FileProblem::WrongBeginning);
    const std::int32_t count = GetInt32(position);
    if (kHeadBytes + kNodeBytes * count > length)
        return FailAsDamaged(end + ", which is too early for " + std::to_string(count) + " nodes.");
    for (std::int32_t i = 0; i < count; ++i) {
        AddShapeNode(GetPoint(position));
        TunnelShape.OutsideNodes.back() = GetPoint(position);
    }
    return true;
}

}  // namespace

bool LoadTunnelShape(const std::string& path) {
    const bool isRead = IfMemorySuffices([&] { return ReadFileToBuffer(path, kShapeBeginning); });
    if (!isRead && lastFileFailure.problem != FileProblem::WrongBeginning) return false;
    ResetTunnelShape();
    const bool good = isRead && IfMemorySuffices(GetShape);
    if (!good) ResetTunnelShape();
    return good;
}

bool SaveTunnelShape(const std::string& path) {
    ClearFileBuffer();
    std::int32_t position = 0;
    PutTag(position, kShapeBeginning);
    PutInt32(position, TunnelShape.NodeCount());
    for (std::size_t i = 0; i < TunnelShape.InsideNodes.size(); ++i) {
        PutPoint(position, TunnelShape.InsideNodes[i]);
        PutPoint(position, TunnelShape.OutsideNodes[i]);
    }
    return WriteBufferToFile(path);
}

}  // namespace boreforge
