#pragma once

#include "platform/Ui.h"
#include "platform/prompt/PromptScript.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>

namespace px::platform {

// Answers every prompt from a script, in order (the prompt protocol of PromptScript), and
// writes each prompt shown to a transcript before it takes the answer. A prompt with no answer
// left, or an answer that does not fit the prompt, ends the run through the exit hook with
// status 3; should the hook return (tests), the prompt is answered as cancelled.
class ScriptedUi final : public Ui {
  public:
    using ExitHook = PromptScript::ExitHook;
    static constexpr int kScriptEnded = PromptScript::kScriptEnded;

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
    void setErrorStream(std::ostream& errors) { m_script.setErrorStream(errors); }

    void append(ScriptAnswer answer) { m_script.append(std::move(answer)); }
    std::size_t remaining() const { return m_script.remaining(); }

    int runAlert(const Alert& alert) override;
    std::optional<SaveResult> runSavePanel(const SaveRequest& request) override;
    std::optional<std::string> runOpenPanel(const OpenRequest& request) override;
    std::optional<std::string> runNameEntry(const NameRequest& request) override;
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest& request) override;
    std::optional<Color> pickColor() override;

    void progressOpen(std::function<void()> onCancel) override;
    void progressShow(const Progress& progress) override;
    void progressClose() override;

  private:
    PromptScript m_script;
    std::function<void()> m_onCancel;
};

} // namespace px::platform
