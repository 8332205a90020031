#pragma once

#include <optional>
#include <string>

namespace px::platform {

// Lines typed on a terminal (or fed through a pipe) read from a file descriptor it does not
// own. End of input answers nothing.
class TerminalInput {
  public:
    explicit TerminalInput(int fd) : m_fd(fd) {}

    bool isTerminal() const;
    // One line without its line break (a carriage return before it is dropped too).
    std::optional<std::string> readLine();
    // The same with the terminal's echo switched off while it is typed, when it is a terminal.
    std::optional<std::string> readSecretLine();

  private:
    bool fill();

    int m_fd;
    std::string m_buffer;
    bool m_ended = false;
};

} // namespace px::platform
