#pragma once

#include "extension/MenuActions.h"
#include "extension/MenuBuilder.h"
#include "extension/Request.h"

#include <cstdint>

namespace px {

enum class DispatchResult {
    Ran,            // the entry's command was called (it may have shown a failure itself)
    TagNotFound,    // no entry of the menu carries the tag
    KeyPathChanged, // the entry at the tag is no longer the one the host showed
};

// Finds the entry with the tag in the menu built for the request, checks that it still has the
// request's key path (when the request names one), and calls its command on `actions`; the use
// is counted, and the review prompt offered when it is due. Call on the main queue.
DispatchResult dispatch(const BuiltMenu& menu, std::int64_t tag, const Request& request,
                        MenuActions& actions);

} // namespace px
