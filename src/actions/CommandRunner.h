#pragma once

#include <optional>
#include <string>
#include <vector>

// Running commands and script files. Children inherit the environment and the working folder;
// see platform/linux/ProcessSpawn.h for where their input and output go. Nothing here reports a
// failure beyond its result.
namespace px::filehash {

// Runs the command text with "/bin/bash" "-c" and waits; true when it exits with status 0.
// Only for fixed command texts of this program's own: a path or any other text from outside
// must never be pasted into it (use executeArguments).
bool execute(const std::string& command);

// Runs the program with exactly these arguments (argv[0] is the program, looked up in PATH when
// it has no slash) and waits; true when it exits with status 0. No shell is involved.
bool executeArguments(const std::vector<std::string>& argv);

// Starts "/bin/sh" with the script path as its only argument and does not wait for it.
void executeShellFile(const std::string& path);

// Compiled and text scripts for the desktop's script runner. This system has none, so they
// are not run: the answer is the message that says so, and nothing when no file is at the path.
std::optional<std::string> executeAppleScriptPath(const std::string& path);
std::optional<std::string> executeAppleScriptSource(const std::string& source);

} // namespace px::filehash
