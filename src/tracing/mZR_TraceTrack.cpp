#include "tracing/mZR_TraceTrack.h"

#include <cmath>
#include <utility>

#include "trackfile/TrackDocument.h"

namespace boreforge {

std::vector<TracedSegment> TracedSegments;
std::int32_t TraceUpperIndex = -1;
bool TrackTraced = false;

namespace {

constexpr float kSampleSpacing = 0.5f;          // units of path
constexpr double kMeasureStep = 0.005;          // of the Bezier parameter
constexpr double kFullTurn = 6.28318530717958;  // two pi, rounded like kPi in mMath3D.cpp

// The four points of a piece, in BezierPoint's order.
struct Piece {
    Vector3D p0, c0, p1, c1;
    Vector3D At(float t) const { return BezierPoint(p0, c0, p1, c1, t); }
};

Piece PieceOf(std::int32_t index, std::int32_t upperIndex) {
    const auto node = [](std::int32_t i) -> const TrackBezierNode& { return TrackFile.BezierNodes[i]; };
    const TrackBezierNode& from = node(index);
    const TrackBezierNode& to = node(index < upperIndex ? index + 1 : 0);
    return {from.Position, from.ControlOut, to.Position, to.ControlIn};
}

float LengthOf(const Piece& piece) { return MeasureBezierLength(piece.p0, piece.c0, piece.p1, piece.c1); }

// Turns a frame so that its forward axis points along `v`, which is given in the frame's own coordinates: a
// yaw about its up axis, then a pitch about the new right axis. There is no fixed world up, so the frame
// stays continuous through loops.
void TurnTowards(Matrix3D& frame, const Vector3D& v) {
    const double x = v.x, z = v.z;
    const float pitch = static_cast<float>(Atan2(v.y, std::sqrt(z * z + x * x)));
    const float yaw = static_cast<float>(Atan2(-x, -z));
    frame = MatMultiply(frame, MatRotateY(yaw));
    frame = MatMultiply(frame, MatRotateX(pitch));
}

// The frame moved to a point: only its fourth column changes.
Matrix3D FrameAt(const Vector3D& point, Matrix3D frame) {
    frame[3] = point.x;
    frame[7] = point.y;
    frame[11] = point.z;
    return frame;
}

TraceSample SampleAt(const Vector3D& point, const Matrix3D& frame) {
    TraceSample sample;
    sample.Orientation = frame;
    sample.WorldMatrix = FrameAt(point, frame);
    return sample;
}

// Adds every sample of a piece but the first.
void WalkPiece(const Piece& piece, Matrix3D frame, TracedSegment& traced) {
    if (!(traced.Length > 0)) return;
    const float step = static_cast<float>(1 / (double(traced.Length) * 10));
    Vector3D previous = piece.p0;
    float sinceSample = 0;
    float walked = 0;
    for (float t = step; t <= 1.0f; t += step) {
        const Vector3D point = piece.At(t);
        const double distance = VecDistance(previous, point);
        sinceSample = static_cast<float>(sinceSample + distance);
        walked = static_cast<float>(walked + distance);
        if (sinceSample >= kSampleSpacing) {
            sinceSample = 0;
            // The frame follows the last short chord, not the line from the last sample.
            TurnTowards(frame, MatTransformPoint(MatTranspose(frame), VecSubtract(previous, point)));
            TraceSample& sample = traced.Samples.emplace_back(SampleAt(point, frame));
            sample.PathParam = t;
            sample.PathLength = walked;
        }
        previous = point;
    }
}

float BankOf(const Matrix3D& frame) { return static_cast<float>(Atan2(frame[4], frame[5])); }

// The turn that a node asks for, relative to the frame: its roll, or the way to its bank. That way is
// measured from the frame's bank or from a full turn above it, whichever is nearer, but not from a full turn
// below: existing tracks were built so.
float RelativeRoll(const TrackBezierNode& node, const Matrix3D& lastFrame) {
    if (node.RollFlag) return node.Roll;
    const float bank = BankOf(lastFrame);
    const float direct = static_cast<float>(double(node.Roll) - bank);
    const float around = static_cast<float>(node.Roll - (bank + kFullTurn));
    return std::fabs(around) <= std::fabs(direct) ? around : direct;
}

// Spreads the roll evenly over the samples, from none at the first to all of it at the last. False if the
// roll isn't finite.
bool RollPiece(const TrackBezierNode& node, TracedSegment& traced) {
    const std::int32_t count = traced.SampleCount();
    if (count < 2) return true;  // a single sample is the first, which gets no roll
    if (!std::isfinite(node.Roll)) return false;
    const float delta = RelativeRoll(node, traced.Samples.back().Orientation);
    if (!node.RollFlag && delta == 0) return true;
    for (std::int32_t j = 0; j < count; ++j) {
        TraceSample& sample = traced.Samples[j];
        const Matrix3D roll = MatRotateZ(static_cast<float>(double(delta) / (count - 1) * j));
        sample.Orientation = MatMultiply(sample.Orientation, roll);
        const Matrix3D& world = sample.WorldMatrix;
        sample.WorldMatrix = FrameAt({world[3], world[7], world[11]}, sample.Orientation);
        sample.Bank = BankOf(sample.Orientation);
    }
    return true;
}

// Traces the piece of segment `index`, whose Length is known. False if its roll isn't finite.
bool TracePiece(const Piece& piece, std::int32_t index, std::vector<TracedSegment>& segments) {
    TracedSegment& traced = segments[index];
    Matrix3D frame = MatIdentity();
    if (index > 0)
        frame = segments[index - 1].Samples.back().Orientation;
    else
        TurnTowards(frame, VecSubtract(piece.p0, piece.c0));
    traced.Samples.clear();
    traced.Samples.reserve(static_cast<std::size_t>(traced.Length / kSampleSpacing) + 2);
    traced.Samples.push_back(SampleAt(piece.p0, frame));

    WalkPiece(piece, frame, traced);
    const std::int32_t rollNode = index + 1 < TrackFile.BezierNodeCount() ? index + 1 : 0;
    return RollPiece(TrackFile.BezierNodes[rollNode], traced);
}

bool IsFinite(const Piece& piece) {
    return IsFinite(piece.p0) && IsFinite(piece.c0) && IsFinite(piece.p1) && IsFinite(piece.c1);
}

// Sets the lengths of all segments. False if the path can't be walked. Only what the walk uses must be
// finite: positions of nodes beyond the last segment don't matter.
bool MeasurePieces(std::vector<TracedSegment>& segments) {
    double total = 0;
    for (std::int32_t i = 0; i <= TraceUpperIndex; ++i) {
        const Piece piece = PieceOf(i, TraceUpperIndex);
        if (!IsFinite(piece)) return false;
        segments[i].Length = LengthOf(piece);
        total += segments[i].Length;
        if (!(total <= kMaxPathLength)) return false;  // also refuses NaN
    }
    return true;
}

}  // namespace

float MeasureBezierLength(const Vector3D& p0, const Vector3D& c0, const Vector3D& p1, const Vector3D& c1) {
    float length = 0;
    Vector3D previous = p0;
    for (float t = static_cast<float>(kMeasureStep); t <= 1.0f; t = static_cast<float>(t + kMeasureStep)) {
        const Vector3D point = BezierPoint(p0, c0, p1, c1, t);
        length = static_cast<float>(length + VecDistance(previous, point));
        previous = point;
    }
    return length;
}

void TraceSegment(std::int32_t index) {
    const Piece piece = PieceOf(index, TraceUpperIndex);
    TracedSegments[index].Length = LengthOf(piece);
    (void)TracePiece(piece, index, TracedSegments);
}

bool TraceTrack() {
    TrackTraced = false;
    TraceUpperIndex = TrackFile.SegmentCount() - 1;
    if (TraceUpperIndex < 1 || TrackFile.BezierNodeCount() <= TraceUpperIndex) return false;
    TracedSegments.clear();
    std::vector<TracedSegment> segments(static_cast<std::size_t>(TrackFile.SegmentCount()));
    if (!MeasurePieces(segments)) return false;
    for (std::int32_t i = 0; i <= TraceUpperIndex; ++i)
        if (!TracePiece(PieceOf(i, TraceUpperIndex), i, segments)) return false;
    TracedSegments = std::move(segments);
    TrackTraced = true;
    return true;
}

}  // namespace boreforge
