#include "platform/linux/TerminalInput.h"

#include <algorithm>
#include <cerrno>
#include <termios.h>
#include <unistd.h>

namespace px::platform {

namespace {

// Switches a terminal's echo off for the object's life.
class EchoOff {
  public:
    explicit EchoOff(int fd) : m_fd(fd) {
        if (tcgetattr(fd, &m_saved) != 0) return;
        termios quiet = m_saved;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        m_active = tcsetattr(fd, TCSAFLUSH, &quiet) == 0;
    }
    ~EchoOff() {
        if (m_active) tcsetattr(m_fd, TCSAFLUSH, &m_saved);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

  private:
    int m_fd;
    termios m_saved{};
    bool m_active = false;
};

} // namespace

bool TerminalInput::isTerminal() const {
    return isatty(m_fd) == 1;
}

bool TerminalInput::fill() {
    if (m_ended) return false;
    char chunk[512];
    for (;;) {
        const ssize_t count = ::read(m_fd, chunk, sizeof chunk);
        if (count > 0) {
            m_buffer.append(chunk, static_cast<std::size_t>(count));
            return true;
        }
        if (count < 0 && errno == EINTR) continue;
        m_ended = true;
        return false;
    }
}

std::optional<std::string> TerminalInput::readLine() {
    std::size_t end;
    while ((end = m_buffer.find('\n')) == std::string::npos) {
        if (fill()) continue;
        if (m_buffer.empty()) return std::nullopt;
        end = m_buffer.size();
        break;
    }
    std::string line = m_buffer.substr(0, end);
    m_buffer.erase(0, std::min(m_buffer.size(), end + 1));
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

std::optional<std::string> TerminalInput::readSecretLine() {
    if (!isTerminal()) return readLine();
    EchoOff quiet(m_fd);
    return readLine();
}

} // namespace px::platform
