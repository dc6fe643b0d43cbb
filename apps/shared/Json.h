// What the programs print with --json.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace boreforge {

// A number in the fewest digits from which the same value can be read again.
std::string Number(double value);
std::string Number(float value);

// A JSON string. Bytes that aren't UTF-8 are taken as Latin-1.
std::string Quoted(std::string_view text);

// A name with a value in JSON. The names of a program's output are in its manual page.
std::string Field(const std::string& name, const std::string& value);
template <std::integral Value>
std::string Field(const std::string& name, Value value) {
    if constexpr (std::is_same_v<Value, bool>)
        return Field(name, std::string(value ? "true" : "false"));
    else
        return Field(name, std::to_string(value));
}

// "[a, b]"
std::string JsonList(const std::vector<std::string>& values);
// "{a, b}"
std::string JsonObject(const std::vector<std::string>& fields);

// "1 edge", "2 edges", for reports in words.
std::string Count(std::int64_t count, const std::string& thing);

}  // namespace boreforge
