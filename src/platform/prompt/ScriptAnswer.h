#pragma once

#include "support/ErrorOr.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace px::platform {

// One line of a prompt script: the answer to the next prompt shown.
struct ScriptAnswer {
    enum class Kind { Button, Save, Open, Text, Choose, Embed, Color, Cancel, Stop };

    Kind kind = Kind::Cancel;
    int number = 0;                      // button N, choose N, embed MODE, stop PERCENT
    std::string text;                    // save/open PATH, text TEXT, embed TEXT
    std::optional<std::string> password; // save PATH password TEXT
    std::array<int, 3> color{};          // color R G B, 0-255 each
    int line = 0;                        // line number in the script (1-based)
    std::string source;                  // the line as written, for messages
};

// The word that starts an answer of this kind ("button", "save", ...).
const char* scriptWord(ScriptAnswer::Kind kind);

// Reads one line (without its line break; a trailing carriage return is ignored). Forms:
// "button N", "save PATH [password TEXT]", "open PATH", "text TEXT", "choose N",
// "embed MODE TEXT", "color R G B", "cancel", "stop [PERCENT]". "stop" is not the answer to
// a prompt: it presses the progress window's Cancel once the window shows Cancel and at least
// PERCENT (default 0) of the work is done.
ErrorOr<ScriptAnswer> parseScriptLine(std::string_view line, int lineNumber);

// Reads a whole script: one answer a line; blank lines and lines starting with "#" are skipped;
// lines may end with CRLF. The first malformed line is the error, with its number.
ErrorOr<std::vector<ScriptAnswer>> parseScript(std::string_view text);
ErrorOr<std::vector<ScriptAnswer>> loadScript(const std::string& path);

} // namespace px::platform
