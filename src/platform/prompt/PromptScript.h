#pragma once

#include "platform/Ui.h"
#include "platform/prompt/ScriptAnswer.h"
#include "platform/prompt/Transcript.h"

#include <deque>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>

namespace px::platform {

// The prompt protocol: every prompt shown is written to the transcript, then the next script
// line is fitted to it. The scripted prompts apply the fitted answer directly; the windows'
// driven mode acts it out on the widgets. A prompt with no answer left, or an answer that does
// not fit, ends the run through the exit hook with status 3 (answering as cancelled should the
// hook return).
class PromptScript {
  public:
    using ExitHook = std::function<void(int status)>;
    static constexpr int kScriptEnded = 3;

    PromptScript(std::vector<ScriptAnswer> answers, std::shared_ptr<Transcript> transcript,
                 ExitHook exitHook);

    void setErrorStream(std::ostream& errors) { m_errors = &errors; }
    void append(ScriptAnswer answer) { m_answers.push_back(std::move(answer)); }
    std::size_t remaining() const { return m_answers.size(); }
    Transcript& transcript() { return *m_transcript; }

    // The save panel's answer: the file-type entries chosen before and after the path (by tag),
    // the path (relative ones taken inside the panel's folder) and the password.
    struct SaveAnswer {
        std::optional<std::size_t> typeBefore;
        std::string path;
        std::string password;
        std::optional<std::size_t> typeAfter;
    };

    // Each writes the prompt's record and answers it; absent means cancelled.
    int alert(const Ui::Alert& alert);
    std::optional<SaveAnswer> save(const Ui::SaveRequest& request);
    std::optional<std::string> open(const Ui::OpenRequest& request);
    std::optional<std::string> name(const Ui::NameRequest& request);
    std::optional<Ui::EmbedResult> embed(const Ui::EmbedRequest& request);
    std::optional<Ui::Color> color();

    // The progress window: a new window starts afresh; each state writes its record (a
    // fraction only when it changed to three decimals) and answers whether the script presses
    // Cancel now (a "stop" line that fits). Once Cancel is pressed the window records nothing
    // more (reports already on their way when it was pressed vary with timing).
    void progressOpened() {
        m_lastProgress.reset();
        m_stopped = false;
    }
    bool progress(const Ui::Progress& progress);

  private:
    using Kind = ScriptAnswer::Kind;

    std::optional<ScriptAnswer> take();
    void misfit(const ScriptAnswer& answer, const char* prompt, const char* expected);
    void fail(const std::string& message);
    bool fitsType(const Ui::SaveRequest& request, const ScriptAnswer& answer);

    std::deque<ScriptAnswer> m_answers;
    std::shared_ptr<Transcript> m_transcript;
    ExitHook m_exitHook;
    std::ostream* m_errors;
    std::optional<double> m_lastProgress;
    bool m_stopped = false;
};

} // namespace px::platform
