#include "picture_object.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <optional>

#include "export3ds/ChunkIds.h"

namespace boreforge {

namespace {

constexpr std::size_t kHeaderLength = 6;  // of every chunk: id and length
constexpr float kFarthest = 1e12f;        // units that can still be computed with
constexpr std::uint32_t kNoMaterial = 0xFFFFFFFF;

// Why a file is refused. Thrown within this file alone.
struct Damage {
    std::size_t at;
    std::string what;
};

struct Chunk;

// A part of the file that is read front to back and never beyond its end.
class Content {
  public:
    Content(const std::uint8_t* file, std::size_t at, std::size_t end) : file_(file), at_(at), end_(end) {}

    bool AtEnd() const { return at_ == end_; }
    [[noreturn]] void Fail(const std::string& what) const { throw Damage{at_, what}; }

    const std::uint8_t* Take(std::size_t count) {
        if (end_ - at_ < count) Fail("the chunk is too short for what it must hold");
        at_ += count;
        return file_ + at_ - count;
    }
    std::uint16_t Word() {
        const std::uint8_t* const bytes = Take(2);
        return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
    }
    std::uint32_t Dword() {
        const std::uint32_t low = Word();
        return low | std::uint32_t{Word()} << 16;
    }
    float Finite() {
        const float value = std::bit_cast<float>(Dword());
        if (!std::isfinite(value)) Fail("a number is not finite");
        return value;
    }
    std::string Text() {
        const std::uint8_t* const zero = std::find(file_ + at_, file_ + end_, 0);
        if (zero == file_ + end_) Fail("a name has no end");
        const std::size_t length = static_cast<std::size_t>(zero - (file_ + at_));
        const std::uint8_t* const characters = Take(length + 1);
        return {characters, characters + length};
    }
    // Passes over the rest, which must be of this length.
    void Finish(std::size_t length) {
        if (end_ - at_ != length) Fail("the chunk's length and what it must hold differ");
        at_ = end_;
    }
    Chunk Next();

  private:
    const std::uint8_t* file_;
    std::size_t at_, end_;
};

struct Chunk {
    std::uint16_t id;
    Content content;
};

Chunk Content::Next() {
    const std::size_t start = at_;
    const std::uint16_t id = Word();
    const std::size_t length = Dword();
    if (length < kHeaderLength || length > end_ - start) {
        at_ = start;
        Fail("a chunk doesn't fit into the one around it");
    }
    at_ = start + length;
    return {id, Content(file_, start + kHeaderLength, at_)};
}

class Reader {
  public:
    explicit Reader(PictureObject& object) : object_(object) {}

    void ReadFile(Content file) {
        Chunk main = file.Next();
        if (main.id != MAIN3DS) throw Damage{0, "the file is no 3D Studio mesh file"};
        file.Finish(0);
        while (!main.content.AtEnd()) {
            Chunk chunk = main.content.Next();
            if (chunk.id == M3D_VERSION) chunk.content.Finish(4);
            if (chunk.id == MDATA) ReadMeshData(chunk.content);
        }
        if (object_.Faces.empty()) file.Fail("the file has no face");
    }

  private:
    void ReadMeshData(Content data) {
        while (!data.AtEnd()) {
            Chunk chunk = data.Next();
            if (chunk.id == MESH_VERSION) chunk.content.Finish(4);
            if (chunk.id == MASTER_SCALE) chunk.content.Finite(), chunk.content.Finish(0);
            if (chunk.id == MAT_ENTRY) ReadMaterial(chunk.content);
            if (chunk.id == NAMED_OBJECT) ReadNamedObject(chunk.content);
        }
    }

    static ColorRGB ReadColor(Content content) {
        Chunk chunk = content.Next();
        if (chunk.id != COLOR_24) chunk.content.Fail("a colour is not in three bytes");
        const std::uint8_t* const channels = chunk.content.Take(3);
        chunk.content.Finish(0);
        while (!content.AtEnd())
            content.Next();  // the same colour in another measure
        return {channels[0], channels[1], channels[2]};
    }

    static void ReadPercentage(Content content) {
        Chunk chunk = content.Next();
        if (chunk.id != INT_PERCENTAGE) chunk.content.Fail("a percentage is no whole number");
        if (chunk.content.Word() > 100) chunk.content.Fail("a percentage is above 100");
        chunk.content.Finish(0);
        content.Finish(0);
    }

    void ReadMaterial(Content entry) {
        std::string name;
        std::optional<ColorRGB> color;
        while (!entry.AtEnd()) {
            const Chunk chunk = entry.Next();
            switch (chunk.id) {
                case MAT_NAME:
                    name = Content(chunk.content).Text();
                    break;
                case MAT_DIFFUSE:
                    color = ReadColor(chunk.content);
                    break;
                case MAT_AMBIENT:
                case MAT_SPECULAR:
                    ReadColor(chunk.content);
                    break;
                case MAT_SHININESS:
                case MAT_SHIN2PCT:
                case MAT_TRANSPARENCY:
                case MAT_XPFALL:
                case MAT_REFBLUR:
                case MAT_SELF_ILPCT:
                    ReadPercentage(chunk.content);
                    break;
                default:
                    break;
            }
        }
        if (name.empty() || !color) entry.Fail("a material lacks its name or its colour");
        if (MaterialNamed(name) != kNoMaterial) entry.Fail("two materials have the name '" + name + "'");
        names_.push_back(name);
        object_.Colors.push_back(*color);
    }

    std::uint32_t MaterialNamed(const std::string& name) const {
        const auto found = std::find(names_.begin(), names_.end(), name);
        return found == names_.end() ? kNoMaterial : static_cast<std::uint32_t>(found - names_.begin());
    }

    // Lights and cameras are named objects too.
    void ReadNamedObject(Content named) {
        named.Text();
        while (!named.AtEnd()) {
            const Chunk chunk = named.Next();
            if (chunk.id == N_TRI_OBJECT) ReadMesh(chunk.content);
        }
    }

    // The points stand in the scene's own space: the matrix of a mesh must be whole, but doesn't move them.
    void ReadMesh(Content mesh) {
        const std::size_t firstPoint = object_.Points.size();
        std::optional<Content> faces;
        while (!mesh.AtEnd()) {
            Chunk chunk = mesh.Next();
            switch (chunk.id) {
                case POINT_ARRAY:
                    if (object_.Points.size() > firstPoint)
                        chunk.content.Fail("a mesh has two lists of points");
                    ReadPoints(chunk.content);
                    break;
                case TEX_VERTS:
                    chunk.content.Finish(8 * std::size_t{chunk.content.Word()});
                    break;
                case MESH_MATRIX:
                    for (int i = 0; i < 12; ++i)
                        chunk.content.Finite();
                    chunk.content.Finish(0);
                    break;
                case FACE_ARRAY:
                    if (faces) chunk.content.Fail("a mesh has two lists of faces");
                    faces = chunk.content;
                    break;
                default:
                    break;
            }
        }
        if (!faces) mesh.Fail("a mesh has no list of faces");
        ReadFaces(*faces, firstPoint);
    }

    // The file's axes are x to the right, y forward and z up.
    void ReadPoints(Content points) {
        const std::size_t count = points.Word();
        for (std::size_t i = 0; i < count; ++i) {
            const float x = points.Finite(), y = points.Finite(), z = points.Finite();
            if (std::max({std::fabs(x), std::fabs(y), std::fabs(z)}) > kFarthest)
                points.Fail("a point is farther away than anything can be");
            object_.Points.push_back({x, z, -y});
        }
        points.Finish(0);
    }

    void ReadFaces(Content faces, std::size_t firstPoint) {
        const std::size_t firstFace = object_.Faces.size(), count = faces.Word();
        const std::size_t points = object_.Points.size() - firstPoint;
        const auto corner = [&] {
            const std::size_t index = faces.Word();
            if (index >= points) faces.Fail("a face has a vertex that the mesh has not");
            return static_cast<std::uint32_t>(firstPoint + index);
        };
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t a = corner(), b = corner(), c = corner();
            faces.Word();  // which edges are visible
            object_.Faces.push_back({a, b, c, kNoMaterial});
        }
        while (!faces.AtEnd()) {
            Chunk chunk = faces.Next();
            if (chunk.id == MSH_MAT_GROUP) ReadMaterialGroup(chunk.content, firstFace);
            if (chunk.id == SMOOTH_GROUP) chunk.content.Finish(4 * count);
        }
        for (std::size_t i = firstFace; i < object_.Faces.size(); ++i)
            if (object_.Faces[i].Material == kNoMaterial) faces.Fail("a face has no material");
    }

    void ReadMaterialGroup(Content group, std::size_t firstFace) {
        const std::string name = group.Text();
        const std::uint32_t material = MaterialNamed(name);
        if (material == kNoMaterial) group.Fail("there is no material '" + name + "'");
        const std::size_t count = group.Word();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t face = firstFace + group.Word();
            if (face >= object_.Faces.size()) group.Fail("a material is for a face that the mesh has not");
            if (object_.Faces[face].Material != kNoMaterial) group.Fail("a face has two materials");
            object_.Faces[face].Material = material;
        }
        group.Finish(0);
    }

    PictureObject& object_;
    std::vector<std::string> names_;  // of the materials
};

}  // namespace

bool ReadPictureObject(const Bytes& file, PictureObject& object, std::string& damage) {
    object = PictureObject();
    try {
        Reader(object).ReadFile(Content(file.data(), 0, file.size()));
        return true;
    } catch (const Damage& found) {
        damage = "At byte " + std::to_string(found.at) + ": " + found.what + ".";
        return false;
    }
}

}  // namespace boreforge
