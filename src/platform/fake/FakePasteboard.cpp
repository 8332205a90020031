#include "platform/fake/FakePasteboard.h"

namespace px::platform {

void FakePasteboard::clearContents() {
    m_text.reset();
    ++m_clears;
}

void FakePasteboard::setString(const std::string& text) {
    m_text = text;
    m_writes.push_back(text);
}

} // namespace px::platform
