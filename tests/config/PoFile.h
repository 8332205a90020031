#pragma once

#include "support_files/TestSupport.h"

#include <map>
#include <sstream>
#include <string>

namespace px::test {

// The msgid to msgstr pairs of a .po file (without the header entry), for checking the
// catalogues of the source tree. Understands the subset that the project's catalogues use:
// one-line and continued strings with the escapes \" \\ \n \t.
inline std::string unquotePo(const std::string& line) {
    const auto first = line.find('"'), last = line.rfind('"');
    std::string text;
    for (auto i = first + 1; i < last; ++i) {
        if (line[i] != '\\') {
            text.push_back(line[i]);
            continue;
        }
        const char escaped = line[++i];
        text.push_back(escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped);
    }
    return text;
}

inline std::map<std::string, std::string> readPoFile(const std::string& path) {
    std::map<std::string, std::string> entries;
    std::istringstream in(readFile(path));
    std::string line, msgid, msgstr, *current = nullptr;
    auto flush = [&] {
        if (!msgid.empty()) entries[msgid] = msgstr;
        msgid.clear();
        msgstr.clear();
    };
    while (std::getline(in, line)) {
        if (line.rfind("msgid ", 0) == 0) {
            flush();
            current = &msgid;
        } else if (line.rfind("msgstr ", 0) == 0) {
            current = &msgstr;
        } else if (line.empty() || line[0] != '"') {
            current = nullptr;
            continue;
        }
        if (current) *current += unquotePo(line);
    }
    flush();
    return entries;
}

inline std::string sourceCatalogue(const std::string& language) {
    return std::string(PX_SOURCE_DIR) + "/po/" + language + ".po";
}

} // namespace px::test
