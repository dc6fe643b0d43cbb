// What the programs without a window have in common: messages on standard error, help, version, exit status.
#pragma once

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "base/Message.h"
#include "platform/Signals.h"
#include "version.h"

namespace boreforge {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2 };

// Sorts the arguments behind the program's name: help and version, options, and two file names, `files` in
// words. `take` gets an option's index, moves it to the option's last argument and says what is wrong with
// it; nothing when it took it. Nothing comes out when the arguments are wrong: `error` then says how.
template <class Options, class Take>
std::optional<Options> ParseArguments(const std::vector<std::string>& arguments, std::string& error,
                                      const char* files, std::string Options::*first,
                                      std::string Options::*second, Take take) {
    Options options;
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "--version") {
            (argument == "--help" ? options.Help : options.Version) = true;
            return options;
        }
        if (!argument.starts_with("-") || argument == "-") {
            paths.push_back(argument);
            continue;
        }
        error = take(i, options);
        if (!error.empty()) return std::nullopt;
    }
    if (paths.size() != 2 || paths[0].empty() || paths[1].empty()) {
        error = std::string(files) + " are needed, and nothing else";
        return std::nullopt;
    }
    options.*first = paths[0];
    options.*second = paths[1];
    return options;
}

// Runs a program from its main function. `parse` takes the arguments behind the program's name; it gives
// nothing when they are wrong and says how. `run` does the work and gives the exit status.
template <class Options>
int RunProgram(const char* name, const char* usage, int count, char** arguments,
               std::optional<Options> (*parse)(const std::vector<std::string>&, std::string&),
               int (*run)(const Options&)) {
    SetMessageHook([](const std::string& text, const std::string&, MessageIcon) {
        std::fprintf(stderr, "%s\n", text.c_str());
    });
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow further is a failed write, not the end
    RemoveUnfinishedOnSignals();
    std::string error;
    const auto options = parse(std::vector<std::string>(arguments + 1, arguments + count), error);
    if (!options) {
        std::fprintf(stderr, "%s: %s\n\n%s", name, error.c_str(), usage);
        return kWrongUsage;
    }
    if (options->Help) {
        std::fputs(usage, stdout);
        return kDone;
    }
    if (options->Version) {
        std::printf("%s %s\n", name, kVersion);
        return kDone;
    }
    try {
        return run(*options);
    } catch (const std::bad_alloc&) {
        ShowError("Error - Not Enough Memory!");
        return kFailed;
    }
}

}  // namespace boreforge
