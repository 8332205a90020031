#include "platform/linux/TranscriptPasteboard.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace px::platform {

TranscriptPasteboard::TranscriptPasteboard(std::shared_ptr<Transcript> transcript)
    : m_transcript(std::move(transcript)) {}

TranscriptPasteboard::TranscriptPasteboard(std::ostream& out) : m_out(&out) {}

void TranscriptPasteboard::clearContents() {
    std::lock_guard lock(m_mutex);
    m_text.reset();
}

void TranscriptPasteboard::setString(const std::string& text) {
    std::lock_guard lock(m_mutex);
    m_text = text;
    if (m_transcript)
        m_transcript->write({{"clipboard", text}});
    else if (m_out)
        *m_out << text << '\n' << std::flush;
}

std::optional<std::string> TranscriptPasteboard::string() {
    std::lock_guard lock(m_mutex);
    return m_text;
}

} // namespace px::platform
