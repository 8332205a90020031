#pragma once

#include "platform/Ui.h"
#include "platform/linux/TerminalInput.h"

#include <iosfwd>

namespace px::platform {

// Asks every prompt on the terminal: the questions go to the prompt stream (standard error by
// default, so standard output stays clean) and the answers are read from the input descriptor
// (standard input by default). End of input cancels the prompt.
class TerminalUi final : public Ui {
  public:
    TerminalUi();
    TerminalUi(int inputFd, std::ostream& prompts);

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
    // Shows the question until `parse` accepts the line; nothing at end of input.
    template <typename Parse> auto ask(const std::string& question, Parse parse);
    std::optional<std::size_t> askNumbered(const std::string& question,
                                           const std::vector<std::string>& titles);
    bool chooseFileType(const SaveRequest& request);
    void endProgressLine();

    TerminalInput m_input;
    std::ostream& m_prompts;
    bool m_progressShown = false;
};

// "#1a2b3c" or "1a2b3c" as a colour; nothing for anything else.
std::optional<Ui::Color> parseHexColor(const std::string& text);

} // namespace px::platform
