#include "shared/Report.h"

#include <charconv>
#include <cstdio>
#include <iterator>

namespace boreforge {

namespace {

template <class Value>
std::string Shortest(Value value) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), value).ptr};
}

}  // namespace

std::string Number(double value) { return Shortest(value); }
std::string Number(float value) { return Shortest(value); }

std::string Count(std::int64_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

void PrintJson(const Json& report) {
    std::puts(report.dump(-1, ' ', true, Json::error_handler_t::replace).c_str());
}

}  // namespace boreforge
