// Numbers and JSON in the programs' reports.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

namespace boreforge {

// A number in the fewest digits from which the same value can be read again.
std::string Number(double value);
std::string Number(float value);

// "1 edge", "2 edges"
std::string Count(std::int64_t count, const std::string& thing);

// Each program's manual page lists its keys.
using Json = nlohmann::ordered_json;

// A finite number in as few digits as Number.
Json ToJson(std::floating_point auto value) { return Json::parse(Number(value)); }

// Prints one line to standard output. Characters beyond ASCII are escaped; bytes that aren't UTF-8 become
// U+FFFD.
void PrintJson(const Json& report);

}  // namespace boreforge
