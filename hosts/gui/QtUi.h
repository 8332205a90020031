#pragma once

#include "ProgressWindow.h"
#include "QueuePump.h"
#include "platform/Ui.h"
#include "platform/prompt/PromptScript.h"

#include <memory>

namespace px::gui {

class ColorPicker;

// The real windows of every prompt. In driven mode (a prompt script is set) each window is
// still shown, its record goes to the transcript by the prompt protocol, and the fitted answer
// is acted out on its widgets: buttons clicked, paths and passwords typed, pop-up entries
// chosen, Cancel pressed.
class QtUi final : public platform::Ui {
  public:
    QtUi(QueuePump& pump, ColorPicker& colors);
    ~QtUi() override;

    // The script of the request being run (driven mode), or none (a person answers).
    void setScript(std::shared_ptr<platform::PromptScript> script) { m_script = std::move(script); }
    bool hasOpenWindow() const;

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
    QueuePump& m_pump;
    ColorPicker& m_colors;
    std::shared_ptr<platform::PromptScript> m_script;
    std::unique_ptr<ProgressWindow> m_progress;
    int m_openDialogs = 0;
};

} // namespace px::gui
