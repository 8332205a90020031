// The real extension process under Xvfb: one per session, re-election after a kill, bad input,
// the idle exit and the clipboard, and real key presses on real windows.
#include "Frame.h"
#include "GuiSession.h"
#include "Messages.h"
#include "SessionSocket.h"

#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace px::test;
using namespace std::chrono_literals;

namespace {

class ExtensionProcessTest : public GuiFixture {
  protected:
    // A request for the "Copy Path" entry of a.txt, handed over without waiting.
    Strings copyPath() {
        const std::string a = work.write("a.txt", "alpha");
        const int tag = tagAt({"Copy Path"}, request(0, work.path(), {a}));
        return Strings{"--tag", std::to_string(tag), "--ui",      "gui", "--kind",
                       "0",     "--target",          work.path(), "--",  a};
    }
    // Sends raw bytes to the serving process; answers its reply frame.
    std::string sendRaw(const std::string& bytes, bool shutWrite = false) {
        auto fd = px::handoff::connectTo(runtimeFolder() + "/pxmenu/socket");
        if (fd.isError()) return "connect: " + fd.error().message;
        (void)px::handoff::writeAll(fd.value().get(), bytes);
        if (shutWrite) ::shutdown(fd.value().get(), SHUT_WR);
        px::handoff::FrameReader reader;
        auto frame = px::handoff::readFrame(fd.value().get(), reader, 8s);
        if (frame.isError()) return "no reply: " + frame.error().message;
        auto reply = px::handoff::decodeReply(frame.value());
        return reply.isError() ? reply.error().message : reply.value().message;
    }
    std::string clipboard() { return runProcess({"xclip", "-o", "-selection", "clipboard"}).out; }
};

TEST_F(ExtensionProcessTest, EightSimultaneousCallsLeaveOneProcessAndAKilledOneIsReplaced) {
    const Strings args = copyPath();
    std::vector<std::future<ProcessResult>> calls;
    for (int index = 0; index < 8; ++index)
        calls.push_back(std::async(std::launch::async, [&] { return gui(args); }));
    for (auto& call : calls) {
        ProcessResult result = call.get();
        EXPECT_EQ(result.exitStatus, 0) << result.err;
    }
    ASSERT_TRUE(waitForProcesses(1, 5)) << extensionProcesses().size() << " processes";
    const pid_t first = extensionProcesses().front();
    EXPECT_EQ(clipboard(), work / "a.txt");

    ::kill(first, SIGKILL);
    ASSERT_TRUE(waitForProcesses(0, 5));
    ProcessResult again = gui(args);
    EXPECT_EQ(again.exitStatus, 0) << again.err;
    ASSERT_TRUE(waitForProcesses(1, 5));
    EXPECT_NE(extensionProcesses().front(), first) << "a new process took over the stale socket";
}

TEST_F(ExtensionProcessTest, BadInputGetsAClearAnswerAndTheProcessKeepsServing) {
    const Strings args = copyPath();
    ASSERT_EQ(gui(args).exitStatus, 0);
    using px::handoff::Field;
    const struct {
        const char* name;
        std::string bytes;
        bool shut;
        const char* expected;
    } cases[] = {
        {"garbage", "GET / HTTP/1.0\r\n\r\n", false, "not a pxmenu request frame"},
        {"oversized", std::string("PXF1\xff\xff\xff\x7f", 8), false, "larger than"},
        {"field overrun", px::handoff::encodeFrame({{1, "run"}}).substr(0, 12) + "xx", true,
         "cut short"},
        {"no folder", px::handoff::encodeFrame({{1, "run"}}), false, "no absolute working folder"},
        {"unknown field", px::handoff::encodeFrame({{99, "x"}}), false, "unknown tag 99"},
    };
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.name);
        EXPECT_NE(sendRaw(bad.bytes, bad.shut).find(bad.expected), std::string::npos)
            << sendRaw(bad.bytes, bad.shut);
    }
    // A tag nothing has, and a selection that vanished: a message and the exit status.
    Strings unknown = args;
    unknown[1] = "987654";
    unknown.insert(unknown.begin() + 4, "--wait");
    ProcessResult result = gui(unknown);
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_NE(result.err.find("no menu entry has the tag 987654"), std::string::npos);
    // The keys of the entry the host showed travel with the request: other keys, nothing runs.
    Strings changed = args;
    changed.insert(changed.begin() + 4, {"--wait", "--key", "Delete"});
    result = gui(changed);
    EXPECT_EQ(result.exitStatus, 5) << result.err;
    EXPECT_NE(result.err.find("has changed since the menu was shown"), std::string::npos);
    Strings vanished = args;
    vanished.back() = work / "gone.txt";
    vanished.insert(vanished.begin() + 4, "--wait");
    result = gui(vanished);
    EXPECT_TRUE(result.exitStatus == 0 || result.exitStatus == 4) << result.err;

    // Another user's connection is refused by its user id (the folder is opened for it here).
    const std::string socket = runtimeFolder() + "/pxmenu/socket";
    ASSERT_EQ(::chmod((runtimeFolder() + "/pxmenu").c_str(), 0755), 0);
    ASSERT_EQ(::chmod(runtimeFolder().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(xdg.home().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(socket.c_str(), 0777), 0);
    int pipeFds[2];
    ASSERT_EQ(::pipe(pipeFds), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(pipeFds[0]);
        std::string answer = "could not become nobody";
        if (::setgid(65534) == 0 && ::setuid(65534) == 0) answer = sendRaw("x");
        (void)!::write(pipeFds[1], answer.data(), answer.size());
        ::_exit(0);
    }
    ::close(pipeFds[1]);
    std::string answer;
    char buffer[512];
    for (ssize_t got; (got = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;)
        answer.append(buffer, static_cast<std::size_t>(got));
    ::close(pipeFds[0]);
    ::waitpid(child, nullptr, 0);
    if (::getuid() != 0) GTEST_SKIP() << "only root can start a child as another user";
    EXPECT_NE(answer.find("from user id 65534 was refused"), std::string::npos) << answer;

    ProcessResult still = gui(args);
    EXPECT_EQ(still.exitStatus, 0) << still.err;
    EXPECT_EQ(extensionProcesses().size(), 1u);
}

TEST_F(ExtensionProcessTest, IdleExitWaitsWhileTheClipboardIsOwned) {
    ASSERT_EQ(gui(copyPath()).exitStatus, 0);
    ASSERT_TRUE(waitForProcesses(1, 5));
    std::this_thread::sleep_for(5s); // longer than the idle time of 3 s
    EXPECT_EQ(extensionProcesses().size(), 1u) << "it still owns the clipboard";
    EXPECT_EQ(clipboard(), work / "a.txt");
    // Another program takes the clipboard: now the process may go.
    runProcess(
        {"sh", "-c", "echo other | xclip -selection clipboard -i -loops 1 >/dev/null 2>&1 &"});
    EXPECT_TRUE(waitForProcesses(0, 10)) << "the idle exit happens";
}

// Disabled: on a bare Xvfb (no window manager) the typed keys do not reach the dialog's name
// field and the run hangs or cancels; to be finished with a window manager in the session.
TEST_F(ExtensionProcessTest, DISABLED_RealKeysOnRealWindows) {
    if (runProcess({"sh", "-c", "command -v xdotool"}).exitStatus != 0)
        GTEST_SKIP() << "xdotool is not installed";
    const std::string a = work.write("a.txt", "alpha"), b = work.write("b.txt", "beta");
    const int tag = tagAt({"Embed in Folder"}, request(0, work.path(), {a, b}));
    ASSERT_GE(tag, 0);
    Strings args{"--tag", std::to_string(tag), "--ui", "gui", "--wait"};
    for (const auto& arg : request(0, work.path(), {a, b}))
        args.push_back(arg);
    auto call = std::async(std::launch::async, [&] { return gui(args); });
    ASSERT_EQ(runProcess({"timeout", "20", "xdotool", "search", "--sync", "--onlyvisible", "--name",
                          "Embed in Folder"})
                  .exitStatus,
              0)
        << "the embed dialog was not mapped";
    // A real click into the name field (the first row) gives it the focus; then select all,
    // type the name, Tab to the mode pop-up and Return confirms.
    const std::string window =
        runProcess({"xdotool", "search", "--onlyvisible", "--name", "Embed in Folder"}).out;
    const std::string id = window.substr(0, window.find('\n'));
    runProcess({"xdotool", "mousemove", "--window", id, "200", "25", "click", "1"});
    runProcess({"xdotool", "key", "--delay", "50", "ctrl+a"});
    runProcess({"xdotool", "type", "--delay", "30", "Typed Box"});
    runProcess({"xdotool", "key", "--delay", "50", "Tab", "Return"});
    ProcessResult result = call.get();
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_TRUE(exists(work / "Typed Box/a.txt") && exists(work / "Typed Box/b.txt"))
        << ::testing::PrintToString(listing(work.path()));
}

} // namespace
