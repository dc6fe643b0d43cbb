#include "object_check.h"

#include <cstddef>
#include <set>
#include <string>

#include "scratch_files.h"

namespace boreforge {

namespace {

struct Reader {
    const std::vector<std::uint8_t>& bytes;
    std::size_t at = 0;

    std::uint32_t Number(std::size_t width) {
        Require(bytes.size() - at >= width);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < width; ++i)
            value |= std::uint32_t{bytes[at + i]} << (8 * i);
        at += width;
        return value;
    }
    std::string Text() {
        std::string text;
        while (const auto c = static_cast<char>(Number(1)))
            text += c;
        return text;
    }
};

struct Names {
    std::set<std::string> objects, materials;
    std::size_t points = 0;  // of the mesh that is being read
};

void ReadChunks(Reader& in, std::size_t end, Names& names);

void ReadFaces(Reader& in, Names& names) {
    for (std::uint32_t left = in.Number(2); left > 0; --left) {
        for (int corner = 0; corner < 3; ++corner)
            Require(in.Number(2) < names.points);
        in.Number(2);
    }
}

void ReadChunk(Reader& in, Names& names) {
    const std::size_t start = in.at;
    const std::uint32_t id = in.Number(2);
    const std::size_t end = start + in.Number(4);
    Require(end >= in.at && end <= in.bytes.size());
    switch (id) {
        case 0x4D4D:
        case 0x3D3D:
        case 0xAFFF:
        case 0x4100:
            ReadChunks(in, end, names);
            break;
        case 0x4000:
            Require(names.objects.insert(in.Text()).second);
            ReadChunks(in, end, names);
            break;
        case 0xA000:
            Require(names.materials.insert(in.Text()).second);
            break;
        case 0x4110:
            names.points = in.Number(2);
            Require(end - in.at == 12 * names.points);
            in.at = end;
            break;
        case 0x4120:
            ReadFaces(in, names);
            ReadChunks(in, end, names);
            break;
        case 0x4130:
            Require(names.materials.count(in.Text()) == 1);
            in.at = end;
            break;
        default:
            in.at = end;
            break;
    }
    Require(in.at == end);
}

void ReadChunks(Reader& in, std::size_t end, Names& names) {
    while (in.at < end)
        ReadChunk(in, names);
}

}  // namespace

void RequireSoundObject(const std::vector<std::uint8_t>& file) {
    Reader in{file};
    Names names;
    ReadChunk(in, names);
    Require(in.at == file.size());
}

}  // namespace boreforge
