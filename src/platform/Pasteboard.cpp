#include "platform/Pasteboard.h"

namespace px::platform {

Pasteboard::~Pasteboard() = default;

} // namespace px::platform
