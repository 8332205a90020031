#pragma once

#include "platform/Pasteboard.h"
#include "platform/prompt/Transcript.h"

#include <memory>

namespace px::gui {

// The desktop clipboard through QClipboard, held by this process (on X11 the text is served
// while the process runs; the idle exit waits while it owns the clipboard). In driven mode
// each text also goes to the request's transcript, as script mode writes it.
class QtPasteboard final : public platform::Pasteboard {
  public:
    void setTranscript(std::shared_ptr<platform::Transcript> transcript) {
        m_transcript = std::move(transcript);
    }
    static bool ownsClipboard();

    void clearContents() override;
    void setString(const std::string& text) override;
    std::optional<std::string> string() override;

  private:
    std::shared_ptr<platform::Transcript> m_transcript;
};

} // namespace px::gui
