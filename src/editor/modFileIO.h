// A buffer for a whole shape file, little-endian, while it is loaded or saved.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Bytes.h"
#include "base/Outcome.h"

namespace boreforge {

extern Bytes FileBuffer;

// Resets FileBuffer to one zero byte.
void ClearFileBuffer();

// Replaces FileBuffer with the file's bytes and one zero byte. FileBuffer is unchanged if the path is empty
// or the file can't be read.
Outcome ReadFileToBuffer(const std::string& path);

// Writes FileBuffer to `path`, replacing any file except a track.
Outcome WriteBufferToFile(const std::string& path);

// Each reads 4 bytes at `position` and advances it by 4. Past the end of the buffer it returns 0 or an empty
// tag, and `position` stays.
std::int32_t GetInt32(std::int32_t& position);
float GetFloat32(std::int32_t& position);
std::string GetTag(std::int32_t& position);  // upper-cased

// Each stores 4 bytes at `position`, makes FileBuffer end after them, and advances `position` by 4.
void PutInt32(std::int32_t& position, std::int32_t value);
void PutFloat32(std::int32_t& position, float value);
void PutTag(std::int32_t& position, std::string_view tag);  // at least four characters

}  // namespace boreforge
