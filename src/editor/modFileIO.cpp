#include "editor/modFileIO.h"

#include <bit>
#include <cstddef>
#include <utility>

#include "base/FileTags.h"
#include "base/Values.h"
#include "platform/OutputFile.h"

namespace boreforge {

Bytes FileBuffer(1);

namespace {

std::uint8_t* Put4(std::int32_t& position) {
    const auto start = static_cast<std::size_t>(position);
    FileBuffer.resize(start + 4);
    position += 4;
    return FileBuffer.data() + start;
}

const std::uint8_t* Get4(std::int32_t& position) {
    const auto start = static_cast<std::size_t>(position);
    if (position < 0 || FileBuffer.size() < 4 || start > FileBuffer.size() - 4) return nullptr;
    position += 4;
    return FileBuffer.data() + start;
}

}  // namespace

void ClearFileBuffer() { FileBuffer.assign(1, 0); }

Outcome ReadFileToBuffer(const std::string& path) {
    Bytes content;
    if (Outcome read = ReadWholeFile(path, content); !read) return read;
    content.push_back(0);
    FileBuffer = std::move(content);
    return {};
}

Outcome WriteBufferToFile(const std::string& path) {
    SaveRules rules;
    rules.mayReplace = [](std::string_view beginning) { return MayReplace(beginning, kShapeTag); };
    return SaveWholeFile(path, FileBuffer, rules);
}

std::int32_t GetInt32(std::int32_t& position) {
    const std::uint8_t* const b = Get4(position);
    return b ? static_cast<std::int32_t>(LittleEndianAt(b)) : 0;
}

float GetFloat32(std::int32_t& position) { return std::bit_cast<float>(GetInt32(position)); }

std::string GetTag(std::int32_t& position) {
    const std::uint8_t* const b = Get4(position);
    return b ? ToUpperAscii(std::string(reinterpret_cast<const char*>(b), 4)) : std::string();
}

void PutInt32(std::int32_t& position, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    std::uint8_t* const b = Put4(position);
    for (int i = 0; i < 4; ++i)
        b[i] = static_cast<std::uint8_t>(bits >> (8 * i));
}

void PutFloat32(std::int32_t& position, float value) {
    PutInt32(position, std::bit_cast<std::int32_t>(value));
}

void PutTag(std::int32_t& position, std::string_view tag) {
    std::uint8_t* const b = Put4(position);
    for (std::size_t i = 0; i < 4; ++i)
        b[i] = static_cast<std::uint8_t>(tag[i]);
}

}  // namespace boreforge
