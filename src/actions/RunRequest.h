#pragma once

#include "extension/Dispatch.h"
#include "extension/Request.h"

#include <cstdint>

namespace px {

// Carries out the entry with the tag for the request, as every host does: builds the menu for
// the request, decodes the tag against it, runs the command, and returns once the command's
// work is over (both queues empty, delayed work included). Call on the thread that owns the
// main queue.
DispatchResult runRequest(Request& request, std::int64_t tag);

} // namespace px
