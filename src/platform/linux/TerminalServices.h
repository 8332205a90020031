#pragma once

#include "platform/Services.h"
#include "platform/Settings.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px::platform {

// The terminal services, carried out by starting a terminal emulator with an argument vector.
// "New Terminal ..." services use the default terminal: $TERMINAL, else x-terminal-emulator,
// else the first known emulator installed. "New iTerm2 ..." services use the second terminal:
// the preference "second terminal" (a program name or path) when it is set, else the first
// known emulator installed other than the default one. Each item gets its own window or tab, at
// the item itself when it is a folder and at its enclosing folder otherwise.
class TerminalServices final : public Services {
  public:
    // The preference naming the second terminal.
    using Preference = std::function<std::optional<std::string>()>;

    explicit TerminalServices(Preference secondTerminal);
    // Reads the second terminal from "second terminal" in the suite.
    static Preference preferenceIn(std::shared_ptr<Settings> suite);

    bool performService(const std::string& name, const std::vector<std::string>& paths) override;

    struct Terminal {
        std::string program;  // what is started: a path found in PATH
        std::string emulator; // its row in the terminal table; empty for an unknown program
    };
    // Looked up afresh on every call (PATH and $TERMINAL may change).
    static std::optional<Terminal> defaultTerminal();
    std::optional<Terminal> secondTerminal() const;
    // The whole argument vector that opens the terminal at `folder`.
    static std::vector<std::string> command(const Terminal& terminal, const std::string& folder,
                                            bool tab);

  private:
    Preference m_secondTerminal;
};

} // namespace px::platform
