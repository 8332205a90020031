#pragma once

#include "platform/Pasteboard.h"
#include "platform/prompt/Transcript.h"

#include <iosfwd>
#include <memory>
#include <mutex>

namespace px::platform {

// The pasteboard of the command line. With a transcript (scripted prompts) every text put on
// it becomes a {"clipboard":"..."} line; without one the text is printed on its own line on
// the output stream (standard output by default). The last text is kept for string().
class TranscriptPasteboard final : public Pasteboard {
  public:
    explicit TranscriptPasteboard(std::shared_ptr<Transcript> transcript);
    explicit TranscriptPasteboard(std::ostream& out);

    void clearContents() override;
    void setString(const std::string& text) override;
    std::optional<std::string> string() override;

  private:
    std::mutex m_mutex;
    std::shared_ptr<Transcript> m_transcript;
    std::ostream* m_out = nullptr;
    std::optional<std::string> m_text;
};

} // namespace px::platform
