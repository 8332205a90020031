#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What each known terminal emulator needs on its command line to open a new window, or a new
// tab, at a folder. Pure data: nothing here looks at the system.
namespace px::terminal {

// The emulators this table knows, in the order they are tried when neither $TERMINAL nor
// x-terminal-emulator names one.
const std::vector<std::string>& knownEmulators();

// The emulator a program file is, judged by its file name: "gnome-terminal" for
// ".../gnome-terminal" and for the Debian wrapper ".../gnome-terminal.wrapper"; nothing for an
// emulator the table does not know.
std::optional<std::string> emulatorOfProgram(std::string_view programPath);

// True when the emulator can open a tab in a running window from its command line.
bool supportsTabs(std::string_view emulator);

// The arguments (after the program itself) that open a window, or a tab, at `folder`, an
// absolute path. An emulator without tabs opens a window for a tab request. An unknown emulator
// gets no arguments: it is started in the folder and opens there, as xterm does. The folder
// is always one whole argument (or the whole value of a "--option=" argument).
std::vector<std::string> arguments(std::string_view emulator, const std::string& folder, bool tab);

} // namespace px::terminal
