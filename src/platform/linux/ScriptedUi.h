#pragma once

#include "platform/Ui.h"
#include "platform/linux/ScriptAnswer.h"
#include "platform/linux/Transcript.h"

#include <deque>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>

namespace px::platform {

// Answers every prompt from a script, in order, and writes each prompt shown to a transcript
// before it takes the answer. A prompt with no answer left, or an answer that does not fit the
// prompt, ends the run through the exit hook with status 3; should the hook return (tests), the
// prompt is answered as cancelled.
class ScriptedUi final : public Ui {
  public:
    using ExitHook = std::function<void(int status)>;
    static constexpr int kScriptEnded = 3;

    // Flushes the standard streams and ends the process at once with the status. Static
    // destructors are not run: background work may still be under way on other threads.
    static void exitProcess(int status);

    ScriptedUi(std::vector<ScriptAnswer> answers, std::shared_ptr<Transcript> transcript,
               ExitHook exitHook = exitProcess);
    // The Ui for `--ui script:FILE`; an unreadable or malformed script is the error.
    static ErrorOr<std::shared_ptr<ScriptedUi>> load(const std::string& scriptPath,
                                                     std::shared_ptr<Transcript> transcript,
                                                     ExitHook exitHook = exitProcess);
    // Where script errors are described (standard error by default).
    void setErrorStream(std::ostream& errors) { m_errors = &errors; }

    void append(ScriptAnswer answer) { m_answers.push_back(std::move(answer)); }
    std::size_t remaining() const { return m_answers.size(); }

    int runAlert(const Alert& alert) override;
    std::optional<SaveResult> runSavePanel(const SaveRequest& request) override;
    std::optional<std::string> runOpenPanel(const OpenRequest& request) override;
    std::optional<std::string> runNameEntry(const NameRequest& request) override;
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest& request) override;
    std::optional<Color> pickColor() override;

    void progressOpen(std::function<void()> onCancel) override;
    void progressSetPercent(double fraction) override;
    void progressSuccess(const std::string& text) override;
    void progressClose() override;

  private:
    using Kind = ScriptAnswer::Kind;

    // The next answer; none (after the exit hook) when the script is used up.
    std::optional<ScriptAnswer> take();
    // Reports an answer that does not fit the prompt and ends the run.
    void misfit(const ScriptAnswer& answer, const char* prompt, const char* expected);
    void fail(const std::string& message);

    std::optional<ScriptAnswer> chooseType(const SaveRequest& request, ScriptAnswer answer);
    bool applyChoice(const SaveRequest& request, const ScriptAnswer& answer);
    std::optional<SaveResult> saveResult(const SaveRequest& request, const ScriptAnswer& answer);

    std::deque<ScriptAnswer> m_answers;
    std::shared_ptr<Transcript> m_transcript;
    ExitHook m_exitHook;
    std::ostream* m_errors;
    std::optional<double> m_lastProgress;
};

} // namespace px::platform
