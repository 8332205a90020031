#pragma once

#include "extension/Request.h"
#include "support/ErrorOr.h"

#include <string>

// What the user is told when one copy or move does not happen.
namespace px::transfer {

// One failed copy or move of `source` into `folder`. The reason goes to standard error; the
// user sees the access guidance when the system refused access (naming the folder that could
// not be written, else the source), otherwise an alert with the reason in the system's words.
void reportFailure(const Request& request, const Error& error, const std::string& source,
                   const std::string& folder);

// "Replace" answered for the very item being copied or moved: it is kept, and the user hears
// why nothing happened to it.
void reportSourceKept(platform::Ui& ui, const std::string& target);

} // namespace px::transfer
