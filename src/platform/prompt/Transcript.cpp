#include "platform/prompt/Transcript.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace px::platform {

Transcript::Transcript() : m_out(std::cout) {}

Transcript::Transcript(std::ostream& out) : m_out(out) {}

void Transcript::write(const nlohmann::json& line) {
    const std::string text = line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    std::lock_guard lock(m_mutex);
    if (!m_closed) m_out << text << '\n' << std::flush;
}

void Transcript::close() {
    std::lock_guard lock(m_mutex);
    m_closed = true;
}

} // namespace px::platform
