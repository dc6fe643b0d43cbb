// Shared by the command-line programs: options, messages on standard error, exit status.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "base/Outcome.h"

namespace boreforge {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

// Runs a program from its main function: parses the arguments with `application`, then calls `work`, whose
// result is the exit status. Adds --version. On wrong usage, says what is wrong and how to get help, and
// returns 2. Output that can't be written is a failure, too.
int RunProgram(CLI::App& application, int count, char** arguments, const std::function<int()>& work);

// A text that is a whole number from `min` to `max`, or nullopt.
std::optional<std::int32_t> ParseNumber(std::string_view text, std::int32_t min, std::int32_t max,
                                        int base = 10);

// Adds an option. `parse`, which returns an optional, converts its value for `target`; a wrong value is
// refused with a description of the right `values`. If the option is repeated, the last one wins.
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

// Adds an option or argument that takes a path, which must not be empty. If it is repeated, the last one
// wins.
CLI::Option* AddPath(CLI::App& application, const std::string& name, std::string& path,
                     const std::string& typeName, const std::string& description);

// Checks that an option's value is not empty.
CLI::Validator NotEmpty();

// Checks that an option's value is a file name with this extension, see HasExtension. The text of
// `extension` must outlive the validator.
CLI::Validator EndsIn(std::string_view extension);

// What went wrong, in one line: the headline without "Error - ", then the reason.
std::string FailureText(const Failure& failure);

// Prints "PROGRAM: FILE: error: TEXT" to standard error, with the consequence indented below it. A failure
// without a path has no FILE. The advice is left out: it is for users of the window.
void PrintFailure(const std::string& program, const Failure& failure);

// Prints "PROGRAM: FILE: error: TEXT", or the same with "warning", to standard error. `path` may be empty.
void PrintMessage(const std::string& program, const std::string& path, bool isError, const std::string& text);

}  // namespace boreforge
