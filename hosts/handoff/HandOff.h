#pragma once

#include "Messages.h"
#include "support/ErrorOr.h"

#include <string>

namespace px::handoff {

// Sends the request to the session's extension process and answers its reply: Accepted, or
// with `request.wait` the Finished reply once the work is over. When nobody answers, starts
// `program` detached (its own session, no inherited descriptors, standard error to
// extension.log in the session folder) and retries for a bounded time.
ErrorOr<Reply> handOff(const Request& request, const std::string& program);

// Where pxmenu-extension is: $PXMENU_EXTENSION, else beside the running program (or in the
// build tree's hosts/gui), else found on PATH.
std::string extensionProgram();

} // namespace px::handoff
