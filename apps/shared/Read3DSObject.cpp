#include "shared/Read3DSObject.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <set>

#include "base/Text.h"
#include "export3ds/ChunkIds.h"

namespace boreforge {

namespace {

constexpr std::size_t kHeaderLength = 6;  // of every chunk: id and length
constexpr float kMaxCoordinate = 1e12f;   // units; larger numbers are too coarse to compute with
constexpr std::uint32_t kNoMaterial = 0xFFFFFFFF;
constexpr std::uint16_t kPercentages[] = {MAT_SHININESS, MAT_SHIN2PCT, MAT_XPFALL, MAT_REFBLUR,
                                          MAT_SELF_ILPCT};

// A chunk or the whole file. Its contents are read from front to back and never beyond their end.
class Chunk {
  public:
    Chunk(std::uint16_t id, const std::uint8_t* file, std::size_t at, std::size_t end)
        : id_(id), file_(file), start_(at), at_(at), field_(at), end_(end) {}

    std::uint16_t Id() const { return id_; }
    bool AtEnd() const { return at_ == end_; }
    // Reports damage at the field that was read last. The exception doesn't leave this source file.
    [[noreturn]] void Fail(const std::string& reason) const { throw ObjectDamage{field_, reason}; }
    // Reports damage at the start of the chunk, which lacks something.
    [[noreturn]] void FailAsWhole(const std::string& reason) const {
        throw ObjectDamage{start_ - kHeaderLength, reason};
    }
    std::size_t FieldStart() const { return field_; }

    const std::uint8_t* Take(std::size_t count) {
        field_ = at_;
        if (end_ - at_ < count) Fail("the chunk is too short for its contents");
        at_ += count;
        return file_ + field_;
    }
    std::uint16_t Word() {
        const std::uint8_t* const bytes = Take(2);
        return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
    }
    std::uint32_t Dword() { return LittleEndianAt(Take(4)); }
    float Number() { return std::bit_cast<float>(Dword()); }
    std::string Text() {
        field_ = at_;
        const std::uint8_t* const zero = std::find(file_ + at_, file_ + end_, 0);
        if (zero == file_ + end_) Fail("a name has no end");
        const std::size_t length = static_cast<std::size_t>(zero - (file_ + at_));
        const std::uint8_t* const characters = Take(length + 1);
        return {characters, characters + length};
    }
    // Skips the rest, which must have this length.
    void Finish(std::size_t length) {
        field_ = at_;
        if (end_ - at_ != length) Fail("the chunk's length doesn't fit its contents");
        at_ = end_;
    }
    Chunk Next() {
        const std::size_t start = at_;
        const std::uint16_t id = Word();
        const std::size_t length = Dword();
        if (length < kHeaderLength || length > end_ - start)
            throw ObjectDamage{start, "a chunk doesn't fit into the one around it"};
        at_ = field_ = start + length;
        return {id, file_, start + kHeaderLength, at_};
    }

  private:
    std::uint16_t id_;
    const std::uint8_t* file_;
    std::size_t start_, at_, field_, end_;
};

class Reader {
  public:
    explicit Reader(Object3DS& object) : object_(object) {}

    void ReadFile(const Bytes& bytes) {
        Chunk file(0, bytes.data(), 0, bytes.size());
        Chunk header = file;
        if (bytes.size() < kHeaderLength || header.Word() != MAIN3DS)
            throw ObjectDamage{0, "the file is not a 3D Studio mesh file"};
        if (const std::size_t length = header.Dword(); length > bytes.size())
            throw ObjectDamage{bytes.size(),
                               "the file ends here, but should have " + std::to_string(length) + " bytes"};
        Chunk main = file.Next();
        file.Finish(0);
        while (!main.AtEnd()) {
            Chunk chunk = main.Next();
            if (chunk.Id() == M3D_VERSION) chunk.Finish(4);
            if (chunk.Id() == MDATA) ReadMeshData(chunk);
        }
        if (badCoordinate_) throw ObjectDamage(*badCoordinate_);
    }

  private:
    void ReadMeshData(Chunk data) {
        while (!data.AtEnd()) {
            Chunk chunk = data.Next();
            if (chunk.Id() == MESH_VERSION) chunk.Finish(4);
            if (chunk.Id() == MASTER_SCALE) ReadFinite(chunk, 1);
            if (chunk.Id() == MAT_ENTRY) ReadMaterial(chunk);
            if (chunk.Id() == NAMED_OBJECT) ReadNamedObject(chunk);
        }
    }

    // A chunk that holds only this many numbers.
    static void ReadFinite(Chunk numbers, int count) {
        for (int i = 0; i < count; ++i)
            if (!std::isfinite(numbers.Number())) numbers.Fail("a number is not finite");
        numbers.Finish(0);
    }

    static ColorRGB ReadColor(Chunk parent) {
        Chunk chunk = parent.Next();
        if (chunk.Id() != COLOR_24) chunk.Fail("a colour is not in three bytes");
        const std::uint8_t* const channels = chunk.Take(3);
        chunk.Finish(0);
        while (!parent.AtEnd())
            parent.Next();  // the same colour in another encoding
        return {channels[0], channels[1], channels[2]};
    }

    static int ReadPercentage(Chunk parent) {
        Chunk chunk = parent.Next();
        if (chunk.Id() != INT_PERCENTAGE) chunk.Fail("a percentage is not a whole number");
        const int percent = chunk.Word();
        if (percent > 100) chunk.Fail("a percentage is above 100");
        chunk.Finish(0);
        parent.Finish(0);
        return percent;
    }

    void ReadMaterial(Chunk entry) {
        ObjectMaterial material;
        std::optional<Chunk> name;
        std::optional<ColorRGB> color;
        while (!entry.AtEnd()) {
            const Chunk chunk = entry.Next();
            if (chunk.Id() == MAT_NAME) {
                name = chunk;
                material.name = name->Text();
            }
            if (chunk.Id() == MAT_DIFFUSE) color = ReadColor(chunk);
            if (chunk.Id() == MAT_AMBIENT || chunk.Id() == MAT_SPECULAR) ReadColor(chunk);
            if (chunk.Id() == MAT_TRANSPARENCY) material.transparency = ReadPercentage(chunk);
            if (std::ranges::find(kPercentages, chunk.Id()) != std::end(kPercentages)) ReadPercentage(chunk);
        }
        if (material.name.empty() || !color) entry.FailAsWhole("a material lacks its name or its colour");
        material.color = *color;
        const auto index = static_cast<std::uint32_t>(object_.materials.size());
        if (!materials_.emplace(material.name, index).second)
            name->Fail("two materials have the name '" + ToOneLine(Shorten(material.name)) + "'");
        object_.materials.push_back(material);
    }

    // Lights and cameras are named objects too.
    void ReadNamedObject(Chunk named) {
        const std::string name = named.Text();
        if (!objects_.insert(name).second)
            named.Fail("two objects have the name '" + ToOneLine(Shorten(name)) + "'");
        while (!named.AtEnd()) {
            const Chunk chunk = named.Next();
            if (chunk.Id() == N_TRI_OBJECT) ReadMesh(chunk);
        }
    }

    // Points are in the scene's space already: a mesh's matrix must be complete, but isn't applied to them.
    void ReadMesh(Chunk mesh) {
        ++object_.meshCount;
        const std::size_t firstPoint = object_.points.size();
        std::optional<Chunk> faces;
        bool hasPoints = false;
        while (!mesh.AtEnd()) {
            Chunk chunk = mesh.Next();
            if (chunk.Id() == POINT_ARRAY) {
                if (hasPoints) chunk.Fail("a mesh has two lists of points");
                hasPoints = true;
                ReadPoints(chunk);
            }
            if (chunk.Id() == TEX_VERTS) chunk.Finish(8 * std::size_t{chunk.Word()});
            if (chunk.Id() == MESH_MATRIX) ReadFinite(chunk, 12);
            if (chunk.Id() == FACE_ARRAY) {
                if (faces) chunk.Fail("a mesh has two lists of faces");
                faces = chunk;
            }
        }
        if (!faces) mesh.FailAsWhole("a mesh has no list of faces");
        ReadFaces(*faces, firstPoint);
    }

    // The file's axes are x to the right, y forward and z up.
    void ReadPoints(Chunk points) {
        const std::size_t count = points.Word();
        for (std::size_t i = 0; i < count; ++i) {
            const float x = Coordinate(points), y = Coordinate(points), z = Coordinate(points);
            object_.points.push_back({x, z, -y});
        }
        points.Finish(0);
    }

    // A bad coordinate doesn't affect the rest of the file, so everything else is checked first.
    float Coordinate(Chunk& points) {
        const float value = points.Number();
        if (!(std::fabs(value) <= kMaxCoordinate) && !badCoordinate_)
            badCoordinate_ = {
                points.FieldStart(),
                std::isfinite(value) ? "a coordinate is too far away" : "a coordinate is not finite", true};
        return value;
    }

    void ReadFaces(Chunk faces, std::size_t firstPoint) {
        const std::size_t firstFace = object_.faces.size(), count = faces.Word();
        const std::size_t points = object_.points.size() - firstPoint;
        const auto corner = [&] {
            const std::size_t index = faces.Word();
            if (index >= points) faces.Fail("a face refers to a vertex that doesn't exist");
            return static_cast<std::uint32_t>(firstPoint + index);
        };
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t a = corner(), b = corner(), c = corner();
            faces.Word();  // which edges are visible
            object_.faces.push_back({a, b, c, kNoMaterial});
        }
        while (!faces.AtEnd()) {
            Chunk chunk = faces.Next();
            if (chunk.Id() == MSH_MAT_GROUP) ReadMaterialGroup(chunk, firstFace);
            if (chunk.Id() == SMOOTH_GROUP) chunk.Finish(4 * count);
        }
        for (std::size_t i = firstFace; i < object_.faces.size(); ++i)
            if (object_.faces[i].material == kNoMaterial) faces.FailAsWhole("a face has no material");
    }

    void ReadMaterialGroup(Chunk group, std::size_t firstFace) {
        const std::string name = group.Text();
        const auto material = materials_.find(name);
        if (material == materials_.end())
            group.Fail("there is no material '" + ToOneLine(Shorten(name)) + "'");
        const std::size_t count = group.Word();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t face = firstFace + group.Word();
            if (face >= object_.faces.size())
                group.Fail("a material is assigned to a face that doesn't exist");
            if (object_.faces[face].material != kNoMaterial) group.Fail("a face has two materials");
            object_.faces[face].material = material->second;
        }
        group.Finish(0);
    }

    Object3DS& object_;
    // Ordered: a file can be made so that all of its names have the same hash.
    std::map<std::string, std::uint32_t> materials_;  // their indices by name
    std::set<std::string> objects_;                   // the names
    std::optional<ObjectDamage> badCoordinate_;       // the first bad one
};

}  // namespace

std::string DamageText(const ObjectDamage& damage) {
    return "At byte " + std::to_string(damage.byte) + ": " + damage.reason + ".";
}

bool Read3DSObject(const Bytes& file, Object3DS& object, ObjectDamage& damage) {
    object = {};
    try {
        Reader(object).ReadFile(file);
        return true;
    } catch (const ObjectDamage& found) {
        object = {};
        damage = found;
        return false;
    }
}

}  // namespace boreforge
