// What our command-line programs share: options, messages on standard error, exit status.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

namespace boreforge {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

// Runs a program from its main function: parses the arguments into what `application` was given to fill, then
// calls `work`, whose result is the exit status. Adds --version. Wrong usage ends with 2 and says what is
// wrong and how to get help. Messages of the core go to standard error.
int RunProgram(CLI::App& application, int count, char** arguments, const std::function<int()>& work);

// A whole number from `least` to `most` and nothing else.
std::optional<std::int32_t> ParseNumber(std::string_view text, std::int32_t least, std::int32_t most,
                                        int base = 10);

// An option whose value `parse`, which returns an optional, turns into `target`. A wrong value is refused
// with a description of the right `values`. The last of several wins.
template <class Target, class Parse>
CLI::Option* AddParsed(CLI::App& application, const std::string& name, Target& target, Parse parse,
                       const std::string& values, const std::string& description) {
    const auto set = [=, &target](const std::string& text) {
        const auto value = parse(text);
        if (!value) throw CLI::ValidationError(name, "takes " + values + ", not '" + text + "'");
        target = static_cast<Target>(*value);
    };
    return application.add_option_function<std::string>(name, set, description)
        ->type_name(values)
        ->take_last();
}

// An option or argument that takes a path, which may not be empty. The last of several wins.
CLI::Option* AddPath(CLI::App& application, const std::string& name, std::string& path,
                     const std::string& typeName, const std::string& description);

// A check for an option's value: the name of a file that ends in `extension`, ASCII case ignored.
CLI::Validator EndsIn(const std::string& extension);

// Text with everything replaced by "?" that could control a terminal, and that isn't UTF-8. Line ends stay.
std::string Printable(const std::string& text);

// Prints to standard error, made printable, with a line end.
void PrintError(const std::string& text);

}  // namespace boreforge
