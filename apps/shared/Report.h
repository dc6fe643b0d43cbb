// Numbers and JSON in the programs' reports.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>

#include <nlohmann/json.hpp>

namespace boreforge {

// A number in the fewest digits from which the same value can be read again.
std::string Number(std::floating_point auto value) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), value).ptr};
}

// "1 edge", "2 edges"
inline std::string Count(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// Each program's manual page lists its keys.
using Json = nlohmann::ordered_json;

// A finite number in as few digits as Number.
Json ToJson(std::floating_point auto value) { return Json::parse(Number(value)); }

// Prints one line to standard output. Characters beyond ASCII are escaped; bytes that aren't UTF-8 become
// U+FFFD.
inline void PrintJson(const Json& report) {
    std::puts(report.dump(-1, ' ', true, Json::error_handler_t::replace).c_str());
}

}  // namespace boreforge
