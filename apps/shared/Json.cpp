#include "shared/Json.h"

#include <charconv>
#include <iterator>

#include "base/Text.h"

namespace boreforge {

namespace {

template <class Value>
std::string Shortest(Value value) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), value).ptr};
}

std::string Joined(char open, const std::vector<std::string>& values, char close) {
    std::string text(1, open);
    for (const std::string& value : values)
        text += (text.size() > 1 ? ", " : "") + value;
    return text + close;
}

}  // namespace

std::string Number(double value) { return Shortest(value); }
std::string Number(float value) { return Shortest(value); }

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = TakeCharacter(text);
        if (character == kNoCharacter || ControlsTerminal(character)) {
            constexpr char kDigits[] = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(before[0]);
            const char32_t code = character == kNoCharacter ? byte : character;
            quoted += "\\u";
            for (const int shift : {12, 8, 4, 0})
                quoted += kDigits[code >> shift & 15];
        } else {
            if (character == '"' || character == '\\') quoted += '\\';
            quoted += before.substr(0, before.size() - text.size());
        }
    }
    return quoted + '"';
}

std::string Field(const std::string& name, const std::string& value) { return Quoted(name) + ": " + value; }

std::string JsonList(const std::vector<std::string>& values) { return Joined('[', values, ']'); }
std::string JsonObject(const std::vector<std::string>& fields) { return Joined('{', fields, '}'); }

std::string Count(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

}  // namespace boreforge
