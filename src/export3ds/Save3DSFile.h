// Writes the model as a mesh file of the published 3D Studio format (.3ds): little-endian chunks of a 16-bit
// id, a 32-bit length that counts the whole chunk, and the content. Every length is worked out ahead from the
// counts, so the file is one forward pass.
#pragma once

#include <cstdint>
#include <string>

#include "platform/OutputFile.h"

namespace boreforge {

// The format's readers count the objects of a file in 16 bits with a sign.
inline constexpr std::int32_t kMaxMeshes = 32767;

// Writes the whole model to `fileName`, which replaces an existing file once it is complete and flushed to
// the disk. False, with the reason in lastFileFailure, when that fails: an old file is then as it was. False
// also, before anything is touched, when the file's length would pass a signed 32-bit number or the model has
// more than 32,767 meshes.
bool Save3DSFile(const std::string& fileName);

// The length of the file for the present model, in bytes; -1 when it would pass a signed 32-bit number.
std::int32_t Compute3DSLength();

// The pieces of the format, each appended to the open output file.
void PutChunkHeader(std::uint16_t id, std::int32_t length, OutputFile& file);
void PutWord(std::uint16_t value, OutputFile& file);
void PutDword(std::uint32_t value, OutputFile& file);
void PutPoint3(float x, float y, float z, OutputFile& file);
void PutZString(const std::string& text, OutputFile& file);  // the characters and a zero byte
void PutColorChunk(std::uint8_t red, std::uint8_t green, std::uint8_t blue, OutputFile& file);  // COLOR_24
void PutPercentChunk(std::int16_t value, OutputFile& file);  // INT_PERCENTAGE

}  // namespace boreforge
