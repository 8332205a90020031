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
// "New Terminal ..." services use the default terminal: the preference "terminal" when it is
// set, else $TERMINAL, else x-terminal-emulator, else the first known emulator installed. "New
// iTerm2 ..." services use the second terminal: the preference "second terminal" (a program name or
// path) when it is set, else the first known emulator installed other than the default one. Each
// item gets its own window or tab, at the item itself when it is a folder and at its enclosing
// folder otherwise.
class TerminalServices final : public Services {
  public:
    // A preference naming a terminal (a program name or path).
    using Preference = std::function<std::optional<std::string>()>;

    // `secondTerminal` names the second terminal, `terminal` the default one.
    explicit TerminalServices(Preference secondTerminal, Preference terminal = nullptr);
    // Reads a terminal preference from the suite: "second terminal", or "terminal".
    static Preference preferenceIn(std::shared_ptr<Settings> suite,
                                   std::string key = "second terminal");

    bool performService(const std::string& name, const std::vector<std::string>& paths) override;

    struct Terminal {
        std::string program;  // what is started: a path found in PATH
        std::string emulator; // its row in the terminal table; empty for an unknown program
    };
    // Looked up afresh on every call (PATH and $TERMINAL may change).
    std::optional<Terminal> defaultTerminal() const;
    std::optional<Terminal> secondTerminal() const;
    // The known emulators found in PATH, in the table's order: the choices for both terminals.
    static std::vector<std::string> installedEmulators();
    // The whole argument vector that opens the terminal at `folder`.
    static std::vector<std::string> command(const Terminal& terminal, const std::string& folder,
                                            bool tab);

  private:
    Preference m_secondTerminal;
    Preference m_terminal;
};

} // namespace px::platform
