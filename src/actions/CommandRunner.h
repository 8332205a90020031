#pragma once

#include <optional>
#include <string>
#include <vector>

// Running commands and script files. Children inherit the environment and the working folder;
// see support/ProcessSpawn.h for where their input and output go. Nothing here reports a
// failure beyond its result.
namespace px::filehash {

// Starts "/bin/sh" with the script path as its only argument and does not wait for it.
void executeShellFile(const std::string& path);

// Compiled and text scripts for the desktop's script runner. This system has none, so they
// are not run: the answer is the message that says so, and nothing when no file is at the path.
std::optional<std::string> executeAppleScriptPath(const std::string& path);

} // namespace px::filehash
