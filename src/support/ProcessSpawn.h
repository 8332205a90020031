#pragma once

#include "support/ErrorOr.h"

#include <string>
#include <vector>

// Starting programs from an argument vector: never through a shell, so every argument reaches
// the program exactly as given, whatever quotes, dollars or back-quotes it holds. A bare program
// name is looked up in PATH. The children inherit the environment; their standard input is
// /dev/null, so they never read what was meant for this process.
namespace px::process {

// Starts the program and does not wait for it: it is handed to init at once (no zombie is left
// behind) and runs in a session of its own, so it outlives this process. Its output goes to
// /dev/null: a long-lived program (a terminal) must not hold on to this process's output
// streams, which whoever started this process may be reading to their end. An empty working
// directory keeps the current one.
ErrorOr<void> spawnDetached(const std::vector<std::string>& argv,
                            const std::string& workingDirectory = {});

} // namespace px::process
