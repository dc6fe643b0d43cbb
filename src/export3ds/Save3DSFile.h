// Writes the model as a mesh file of the published 3D Studio format (.3ds): little-endian chunks of a 16-bit
// id, a 32-bit length that counts the whole chunk, and the content. All lengths are computed from the counts
// beforehand, so the file is written in one forward pass.
#pragma once

#include <cstdint>
#include <string>

#include "base/Outcome.h"
#include "platform/OutputFile.h"

namespace boreforge {

// Readers of the format count a file's objects in a signed 16-bit number.
inline constexpr std::int32_t kMaxMeshes = 32767;

// What a point and a face of a mesh add to the length of the file.
inline constexpr std::int64_t kPointBytes = 12, kFaceBytes = 8 + 2 + 4;

// Writes the whole model to `fileName`, in place of an existing file once the new one is complete. Fails
// before anything is written if the model doesn't fit the format, see Compute3DSLength. The MaterialIndex of
// every mesh must be an index into the model's materials: there is no mesh without a material.
Outcome Save3DSFile(const std::string& fileName, const SaveRules& rules = {});

// Writes the whole model to an open file, which the caller completes. Fails if the model doesn't fit the
// format.
Outcome Write3DSFile(OutputFile& file);

// The length in bytes of the current model's file; -1 if it doesn't fit a signed 32-bit number or the model
// has more than kMaxMeshes meshes.
std::int32_t Compute3DSLength();

// The pieces of the format, each appended to the open output file.
void PutChunkHeader(std::uint16_t id, std::int64_t length, OutputFile& file);  // length: below 2^31
void PutWord(std::uint16_t value, OutputFile& file);
void PutDword(std::uint32_t value, OutputFile& file);
void PutPoint3(float x, float y, float z, OutputFile& file);
void PutZString(const std::string& text, OutputFile& file);  // the characters and a zero byte
void PutColorChunk(std::uint8_t red, std::uint8_t green, std::uint8_t blue, OutputFile& file);  // COLOR_24
void PutPercentChunk(std::int16_t value, OutputFile& file);  // INT_PERCENTAGE

}  // namespace boreforge
