#pragma once

#include "e2e/CliFixture.h"

#include <csignal>
#include <string>
#include <sys/types.h>

namespace px::test {

// One Xvfb display and one private session bus for the whole test program, started on first
// use; empty `skipReason()` when both run.
class DisplaySession {
  public:
    static DisplaySession& shared();
    const std::string& skipReason() const { return m_skipReason; }
    ~DisplaySession();

  private:
    DisplaySession();
    pid_t m_xvfb = -1;
    pid_t m_bus = -1;
    std::string m_skipReason;
};

// The command-line fixture with the display: `gui` runs `pxmenu run --ui gui`, the other
// helpers look at the session's extension processes.
class GuiFixture : public CliFixture {
  protected:
    void SetUp() override;
    void TearDown() override;

    ProcessResult gui(const Strings& runArgs);
    // `run --tag T --ui gui --wait --drive SCRIPT` with the request's arguments.
    ProcessResult driven(int tag, const Strings& args, const std::string& answers);
    // Process ids of the extension processes serving this test's runtime folder.
    std::vector<pid_t> extensionProcesses() const;
    // Waits up to `seconds` for the count of extension processes to become `count`.
    bool waitForProcesses(std::size_t count, int seconds) const;
    std::string runtimeFolder() const;

  private:
    int m_scripts = 0;
};

} // namespace px::test
