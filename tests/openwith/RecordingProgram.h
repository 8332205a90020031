#pragma once

#include "support_files/TestSupport.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace px::test {

// An executable script standing in for a terminal or an application. Each run appends to a
// record file: the program's file name, the folder it runs in, each argument on its own line,
// then "--end--". It uses shell built-ins only, so it works with any PATH.
class RecordingProgram {
  public:
    // One run: program name, working folder, arguments.
    struct Run {
        std::string program;
        std::string folder;
        std::vector<std::string> arguments;
    };

    RecordingProgram(const std::string& programPath, std::string recordFile)
        : path(programPath), record(std::move(recordFile)) {
        // One write per run, so that runs started together do not interleave their lines.
        write(path,
              "#!/bin/sh\nrun=\"${0##*/}\n$(pwd)\n\"\nfor a in \"$@\"; do run=\"$run$a\n\"; done\n"
              "printf '%s--end--\\n' \"$run\" >> '" +
                  record + "'\n");
        ::chmod(path.c_str(), 0755);
    }

    // The runs recorded so far, waiting up to a few seconds for at least `expected` of them
    // (the programs are started without being waited for).
    std::vector<Run> runs(std::size_t expected) const { return recordedRuns(record, expected); }
    static std::vector<Run> recordedRuns(const std::string& recordFile, std::size_t expected) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        std::vector<Run> found = parse(recordFile);
        while (found.size() < expected && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            found = parse(recordFile);
        }
        return found;
    }

    const std::string path;
    const std::string record;

  private:
    static void write(const std::string& file, const std::string& text) {
        FILE* out = std::fopen(file.c_str(), "w");
        std::fputs(text.c_str(), out);
        std::fclose(out);
    }
    static std::vector<Run> parse(const std::string& recordFile) {
        std::vector<Run> result;
        std::vector<std::string> lines;
        std::string text = readFile(recordFile), line;
        for (char c : text) {
            if (c != '\n') {
                line += c;
                continue;
            }
            if (line != "--end--") {
                lines.push_back(line);
            } else if (lines.size() >= 2) {
                result.push_back({lines[0], lines[1], {lines.begin() + 2, lines.end()}});
                lines.clear();
            }
            line.clear();
        }
        return result;
    }
};

// Waits up to a few seconds for a file to appear.
inline bool appears(const std::string& path) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!exists(path) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return exists(path);
}

} // namespace px::test
