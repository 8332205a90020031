#pragma once

#include "support_files/TestSupport.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace px::test {

// Waits up to a few seconds for a file to appear.
inline bool appears(const std::string& path) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!exists(path) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return exists(path);
}

// An executable script standing in for a terminal or an application. Each run appends to a
// record file, in one write: the program's file name, the folder it runs in, each argument on
// its own line, then "--end--". It uses shell built-ins only, so it works with any PATH.
class RecordingProgram {
  public:
    struct Run {
        std::string program;
        std::string folder;
        std::vector<std::string> arguments;
    };

    RecordingProgram(const std::string& programPath, const std::string& record)
        : path(programPath) {
        std::ofstream(path) << "#!/bin/sh\nrun=\"${0##*/}\n$(pwd)\n\"\n"
                            << "for a in \"$@\"; do run=\"$run$a\n\"; done\n"
                            << "printf '%s--end--\\n' \"$run\" >> '" << record << "'\n";
        ::chmod(path.c_str(), 0755);
    }

    // The runs recorded, waiting up to a few seconds for at least `expected` of them (the
    // programs are started without being waited for).
    static std::vector<Run> recordedRuns(const std::string& record, std::size_t expected) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        std::vector<Run> found = parse(record);
        for (; found.size() < expected && std::chrono::steady_clock::now() < deadline;
             found = parse(record))
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return found;
    }

    const std::string path;

  private:
    static std::vector<Run> parse(const std::string& record) {
        std::vector<Run> result;
        std::vector<std::string> lines;
        std::istringstream in(readFile(record));
        for (std::string line; std::getline(in, line);) {
            if (line != "--end--") {
                lines.push_back(line);
            } else if (lines.size() >= 2) {
                result.push_back({lines[0], lines[1], {lines.begin() + 2, lines.end()}});
                lines.clear();
            }
        }
        return result;
    }
};

} // namespace px::test
