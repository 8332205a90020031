#pragma once

#include <CLI/CLI.hpp>

namespace px::cli {

// Exit statuses of the command line.
enum ExitStatus {
    kDone = 0,
    kBadArguments = 2,
    kAnswersRanOut = 3,
    kTagNotFound = 4,
    // `--key` named another entry than the one now at the tag: nothing ran.
    kEntryChanged = 5,
};

// A command's outcome, set by its callback and returned by main.
struct Outcome {
    int status = kDone;
};

// Thrown inside a command for bad arguments; main turns it into a message and status 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void addSetupCommand(CLI::App& app, Outcome& outcome);
void addConfigCommand(CLI::App& app, Outcome& outcome);
void addMenuCommand(CLI::App& app, Outcome& outcome);
void addRunCommand(CLI::App& app, Outcome& outcome);
void addConfigEditCommands(CLI::App& config);

} // namespace px::cli
