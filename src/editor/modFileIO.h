// The little-endian buffer through which a shape file passes whole.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Bytes.h"

namespace boreforge {

extern Bytes FileBuffer;

// Makes FileBuffer one zero byte.
void ClearFileBuffer();

// Replaces FileBuffer by the file's bytes and one zero byte more. False, with FileBuffer as it was and the
// reason in lastFileFailure, for a file that isn't there, can't be read, or doesn't begin with `beginning`,
// ASCII case ignored: of such a file no more than its beginning is read.
bool ReadFileToBuffer(const std::string& path, std::string_view beginning = {});

// Replaces the file at `path` by FileBuffer. False for an empty path and when the file can't be written
// whole: an old file is then as it was.
bool WriteBufferToFile(const std::string& path);

// Each takes the 4 bytes at `position` and moves it on by 4; beyond the end of the buffer the value is 0 and
// the tag empty.
std::int32_t GetInt32(std::int32_t& position);
float GetFloat32(std::int32_t& position);
std::string GetTag(std::int32_t& position);  // upper-cased

// Each makes FileBuffer end behind the 4 bytes that it stores at `position`, and moves it on by 4.
void PutInt32(std::int32_t& position, std::int32_t value);
void PutFloat32(std::int32_t& position, float value);
void PutTag(std::int32_t& position, std::string_view tag);  // of at least four characters

}  // namespace boreforge
