#pragma once

#include "platform/Ui.h"
#include "platform/linux/ScriptedUi.h"
#include "platform/prompt/PromptScript.h"

#include <initializer_list>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>

namespace px::platform {

// A Ui for unit tests: it keeps every request and answers from lines queued by the test, in
// the language of prompt scripts ("button 1001", "save /tmp/a.zip password pw", "cancel", ...).
// A prompt with no answer left, or an answer that does not fit, is recorded and cancels it.
class FakeUi final : public Ui {
  public:
    struct ProgressEvent {
        enum class Kind { Open, Percent, Success, Close };
        Kind kind;
        double fraction = 0;
        std::string text;
    };

    FakeUi();

    FakeUi& answer(std::string_view line);
    FakeUi& answers(std::initializer_list<std::string_view> lines);
    std::size_t remainingAnswers() const { return m_script->remaining(); }

    const std::vector<Alert>& alerts() const { return m_alerts; }
    const std::vector<SaveRequest>& saves() const { return m_saves; }
    const std::vector<OpenRequest>& opens() const { return m_opens; }
    const std::vector<NameRequest>& names() const { return m_names; }
    const std::vector<EmbedRequest>& embeds() const { return m_embeds; }
    int colorRequests() const { return m_colorRequests; }
    const std::vector<ProgressEvent>& progress() const { return m_progress; }
    // The transcript the same prompts give on the command line, one object per line.
    std::vector<nlohmann::json> transcript() const;

    // Prompts met with no answer left, and malformed or misfitting answers.
    int unansweredPrompts() const;
    std::vector<std::string> scriptErrors() const;

    // The user cancels from the progress window.
    void cancelProgress();

    int runAlert(const Alert& alert) override;
    std::optional<SaveResult> runSavePanel(const SaveRequest& request) override;
    std::optional<std::string> runOpenPanel(const OpenRequest& request) override;
    std::optional<std::string> runNameEntry(const NameRequest& request) override;
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest& request) override;
    std::optional<Color> pickColor() override;

    void progressOpen(std::function<void()> onCancel) override;
    // A fraction is recorded as Percent, the success picture as Success; the waiting state
    // adds no event but is kept as the last state shown.
    void progressShow(const Progress& progress) override;
    const std::optional<Progress>& lastProgressShown() const { return m_lastShown; }
    void progressClose() override;

  private:
    std::ostringstream m_transcriptText;
    std::ostringstream m_errorText;
    std::unique_ptr<ScriptedUi> m_script;
    int m_answerLines = 0;
    int m_endings = 0; // calls of the script's exit hook
    std::vector<std::string> m_parseErrors;

    std::vector<Alert> m_alerts;
    std::vector<SaveRequest> m_saves;
    std::vector<OpenRequest> m_opens;
    std::vector<NameRequest> m_names;
    std::vector<EmbedRequest> m_embeds;
    int m_colorRequests = 0;
    std::vector<ProgressEvent> m_progress;
    std::function<void()> m_onCancel;
    std::optional<Progress> m_lastShown;
};

} // namespace px::platform
