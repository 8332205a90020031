#include "GuiSession.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace px::test {

namespace {

// Starts a program with its standard output to a pipe; answers the pid and the first line.
std::pair<pid_t, std::string> startReading(const std::vector<std::string>& argv) {
    int out[2];
    if (::pipe(out) != 0) return {-1, {}};
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::dup2(out[1], 1);
        const int null = ::open("/dev/null", O_WRONLY);
        ::dup2(null, 2);
        ::close(out[0]);
        std::vector<char*> args;
        for (const auto& arg : argv)
            args.push_back(const_cast<char*>(arg.c_str()));
        args.push_back(nullptr);
        ::execvp(args[0], args.data());
        ::_exit(127);
    }
    ::close(out[1]);
    std::string line;
    char c;
    while (::read(out[0], &c, 1) == 1 && c != '\n')
        line.push_back(c);
    ::close(out[0]);
    return {pid, line};
}

} // namespace

DisplaySession& DisplaySession::shared() {
    static DisplaySession session;
    return session;
}

DisplaySession::DisplaySession() {
#if defined(__SANITIZE_ADDRESS__)
    m_skipReason = "the window tests do not run in the sanitizer build (Qt's own leaks)";
    return;
#endif
    if (runProcess({"sh", "-c", "command -v Xvfb && command -v dbus-daemon"}).exitStatus != 0) {
        m_skipReason = "Xvfb or dbus-daemon is not installed";
        return;
    }
    auto [xvfb, display] = startReading(
        {"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    if (xvfb < 0 || display.empty()) {
        m_skipReason = "Xvfb could not start";
        return;
    }
    m_xvfb = xvfb;
    ::setenv("DISPLAY", (":" + display).c_str(), 1);
    auto [bus, address] = startReading({"dbus-daemon", "--session", "--nofork", "--print-address"});
    if (bus < 0 || address.empty()) {
        m_skipReason = "no session bus could be started";
        return;
    }
    m_bus = bus;
    ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
}

DisplaySession::~DisplaySession() {
    for (pid_t pid : {m_bus, m_xvfb}) {
        if (pid <= 0) continue;
        ::kill(pid, SIGTERM);
        ::waitpid(pid, nullptr, 0);
    }
}

void GuiFixture::SetUp() {
    const auto& reason = DisplaySession::shared().skipReason();
    if (!reason.empty()) GTEST_SKIP() << reason;
    ::setenv("PXMENU_EXTENSION", PXMENU_EXTENSION_BINARY, 1);
    ::setenv("PXMENU_IDLE_SECONDS", "3", 1);
    setUpMenus({"Embed in Folder", "Color Picker"});
}

void GuiFixture::TearDown() {
    for (pid_t pid : extensionProcesses())
        ::kill(pid, SIGKILL);
}

ProcessResult GuiFixture::gui(const Strings& runArgs) {
    Strings all{"run"};
    all.insert(all.end(), runArgs.begin(), runArgs.end());
    return pxmenu(all);
}

ProcessResult GuiFixture::driven(int tag, const Strings& args, const std::string& answers) {
    const std::string script = answerFiles.write("driven-" + std::to_string(++m_scripts),
                                                 answers.empty() ? "\n" : answers);
    Strings all{"--tag", std::to_string(tag), "--ui", "gui", "--wait", "--drive", script};
    all.insert(all.end(), args.begin(), args.end());
    return gui(all);
}

std::string GuiFixture::runtimeFolder() const {
    return std::string(std::getenv("XDG_RUNTIME_DIR"));
}

std::vector<pid_t> GuiFixture::extensionProcesses() const {
    std::vector<pid_t> found;
    const std::string wanted = "XDG_RUNTIME_DIR=" + runtimeFolder();
    const auto program = std::filesystem::canonical(PXMENU_EXTENSION_BINARY);
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        std::error_code error;
        if (std::filesystem::read_symlink(entry.path() / "exe", error) != program) continue;
        const std::string environment = readFile(entry.path() / "environ");
        std::size_t start = 0;
        for (std::size_t end; (end = environment.find('\0', start)) != std::string::npos;
             start = end + 1)
            if (environment.compare(start, end - start, wanted) == 0)
                found.push_back(std::stoi(name));
    }
    return found;
}

bool GuiFixture::waitForProcesses(std::size_t count, int seconds) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < deadline) {
        if (extensionProcesses().size() == count) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return extensionProcesses().size() == count;
}

} // namespace px::test
