#include "shared/CommandLine.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <new>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "base/Values.h"
#include "platform/Process.h"
#include "platform/Signals.h"
#include "version.h"

namespace boreforge {

namespace {

constexpr std::string_view kHeadlinePrefix = "Error - ";

// What is wrong with the arguments. An unknown option is named rather than a missing argument.
std::string UsageFault(const CLI::App& application, const CLI::ParseError& error) {
    for (const std::string& rest : application.remaining())
        if (rest.starts_with('-')) return "The following argument was not expected: " + rest;
    return error.what();
}

int ParseAndWork(CLI::App& application, int count, char** arguments, const std::function<int()>& work) {
    const std::string name = application.get_name();
    application.allow_windows_style_options(false);  // a path may start with "/" on every system
    application.set_version_flag("--version", name + " " + kVersion, "Print the version and exit");
    try {
        std::vector<std::string> texts = ProgramArguments(count, arguments);
        for (const std::string& text : texts)  // CLI11 would take the next text as the value
            if (text.starts_with("--") && text.find('=') == text.size() - 1)
                throw CLI::ValidationError(text.substr(0, text.size() - 1) + " has no value");
        std::ranges::reverse(texts);  // as CLI11 takes them
        application.parse(std::move(texts));
    } catch (const CLI::Success& request) {
        return application.exit(request);  // prints the help or the version
    } catch (const CLI::ParseError& error) {
        const std::string fault = UsageFault(application, error);
        PrintFailure(name, {.reason = fault, .consequence = "Try '" + name + " --help'."});
        return kWrongUsage;
    }
    return work();
}

// False, with the reason in errno, if standard output has failed. CLI11 prints to std::cout, the programs to
// stdout.
bool FlushOutput() {
    errno = 0;
    std::cout.flush();
    if (std::cout.good() && std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
    if (errno == 0) errno = EIO;  // an earlier write failed
    return false;
}

}  // namespace

int RunProgram(CLI::App& application, int count, char** arguments, const std::function<int()>& work) {
    const ProcessSetup setup;
    RemoveUnfinishedOnSignals();
    int status = kFailed;
    try {
        status = ParseAndWork(application, count, arguments, work);
    } catch (const std::bad_alloc&) {
        PrintFailure(application.get_name(), {.headline = "Error - Not Enough Memory!"});
    }
    if (FlushOutput()) return status;
    PrintFailure(application.get_name(), {.headline = "Error - The Output Can't Be Written!",
                                          .reason = SystemFailure(errno).reason,
                                          .consequence = "Files that were saved are complete."});
    return kFailed;
}

std::optional<std::int32_t> ParseNumber(std::string_view text, std::int32_t min, std::int32_t max, int base) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, failure] = std::from_chars(text.data(), end, number, base);
    const bool hasSign = min >= 0 && text.starts_with('-');  // "-0", which from_chars takes
    const bool good = !hasSign && failure == std::errc() && last == end && number >= min && number <= max;
    return good ? std::optional(number) : std::nullopt;
}

CLI::Option* AddPath(CLI::App& application, const std::string& name, std::string& path,
                     const std::string& typeName, const std::string& description) {
    return application.add_option(name, path, description)
        ->type_name(typeName)
        ->check(NotEmpty())
        ->take_last();
}

CLI::Validator NotEmpty() {
    return CLI::Validator([](std::string& text) { return text.empty() ? "is empty" : ""; }, "");
}

CLI::Validator EndsIn(std::string_view extension) {
    return CLI::Validator(
        [extension](const std::string& path) {
            const bool good = path.size() > extension.size() && HasExtension(path, extension);
            return good ? "" : "'" + path + "' doesn't end in " + std::string(extension);
        },
        "");
}

std::string FailureText(const Failure& failure) {
    std::string text = failure.headline;
    if (text.starts_with(kHeadlinePrefix)) text.erase(0, kHeadlinePrefix.size());
    if (!text.empty() && !failure.reason.empty()) text += ' ';
    return text + failure.reason;
}

void PrintFailure(const std::string& program, const Failure& failure) {
    std::string text = FailureText(failure);
    if (!failure.consequence.empty()) text += "\n  " + failure.consequence;
    PrintMessage(program, failure.path, true, text);
}

void PrintMessage(const std::string& program, const std::string& path, bool isError,
                  const std::string& text) {
    const std::string file = path.empty() ? "" : ToOneLine(path) + ": ";
    const std::string line = program + ": " + file + (isError ? "error: " : "warning: ") + text;
    std::fprintf(stderr, "%s\n", ToPrintable(line).c_str());
}

}  // namespace boreforge
