#include "platform/Pasteboard.h"

#include "support/FileHash.h"

namespace px::platform {

Pasteboard::~Pasteboard() = default;

void Pasteboard::copyTrimmed(const std::string& text) {
    clearContents();
    setString(filehash::trimWhiteSpace(text));
}

} // namespace px::platform
