#pragma once

#include "platform/Platform.h"
#include "platform/Ui.h"
#include "platform/fake/MemorySettings.h"
#include "support/PXURLCache.h"
#include "support_files/TestSupport.h"

#include <cerrno>
#include <deque>
#include <filesystem>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace px::test {

// A Ui that records the alerts and open panels it is shown and answers them from queues; an
// empty queue answers "Cancel".
class AnsweringUi final : public platform::Ui {
  public:
    std::deque<int> alertAnswers;
    std::deque<std::optional<std::string>> openAnswers;
    std::vector<Alert> alerts;
    std::vector<OpenRequest> openRequests;

    int runAlert(const Alert& alert) override {
        alerts.push_back(alert);
        return takeFront(alertAnswers, 1001);
    }
    std::optional<std::string> runOpenPanel(const OpenRequest& request) override {
        openRequests.push_back(request);
        return takeFront(openAnswers, std::optional<std::string>{});
    }
    std::optional<SaveResult> runSavePanel(const SaveRequest&) override { return {}; }
    std::optional<std::string> runNameEntry(const NameRequest&) override { return {}; }
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest&) override { return {}; }
    std::optional<Color> pickColor() override { return {}; }
    void progressOpen(std::function<void()>) override {}
    void progressSetPercent(double) override {}
    void progressSuccess(const std::string&) override {}
    void progressClose() override {}

  private:
    template <typename T> static T takeFront(std::deque<T>& queue, T otherwise) {
        if (queue.empty()) return otherwise;
        T front = std::move(queue.front());
        queue.pop_front();
        return front;
    }
};

// Home and XDG folders in a temporary folder, a scripted Ui and in-memory standard defaults,
// and a fresh shared cache for every test.
class PermitTest : public ::testing::Test {
  protected:
    void SetUp() override {
        PXURLCache::resetForTesting();
        installPlatform(defaults);
    }
    void TearDown() override {
        PXURLCache::resetForTesting();
        platform::install({});
    }
    // Installs the scripted Ui with these standard defaults; none means the real file under
    // $XDG_CONFIG_HOME.
    void installPlatform(std::shared_ptr<platform::Settings> standardDefaults) {
        platform::Platform installed;
        installed.ui = ui;
        installed.standardDefaults = std::move(standardDefaults);
        platform::install(std::move(installed));
    }
    // A new folder in the scratch folder, its path free of symbolic links.
    std::string folder(const std::string& name) const {
        return std::filesystem::canonical(scratch.mkdir(name)).string();
    }

    ScopedXdg xdg;
    TempDir scratch;
    std::shared_ptr<AnsweringUi> ui = std::make_shared<AnsweringUi>();
    std::shared_ptr<platform::MemorySettings> defaults =
        std::make_shared<platform::MemorySettings>();
};

// Runs `check` with an ordinary user's permissions: in this process when it is not root, else
// in a child process that has dropped to "nobody" (the scratch folder is opened to it first).
// Nothing when the child cannot drop its privileges.
inline std::optional<bool> runUnprivileged(const std::string& scratch,
                                           const std::function<bool()>& check) {
    if (::geteuid() != 0) return check();
    ::chmod(scratch.c_str(), 0755);
    const pid_t child = ::fork();
    if (child < 0) return std::nullopt;
    if (child == 0) {
        if (::setgroups(0, nullptr) != 0 || ::setgid(65534) != 0 || ::setuid(65534) != 0)
            ::_exit(77);
        ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return std::nullopt;
    if (!WIFEXITED(status) || WEXITSTATUS(status) == 77) return std::nullopt;
    return WEXITSTATUS(status) == 0;
}

#define EXPECT_UNPRIVILEGED(scratch, check)                                                        \
    do {                                                                                           \
        std::optional<bool> outcome = ::px::test::runUnprivileged(scratch, check);                 \
        if (!outcome) GTEST_SKIP() << "runs as root and cannot drop to an unprivileged user";      \
        EXPECT_TRUE(*outcome);                                                                     \
    } while (false)

// Inside a check: reports a failed condition on standard error and makes the check fail.
#define REQUIRE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition);                   \
            return false;                                                                          \
        }                                                                                          \
    } while (false)

} // namespace px::test
