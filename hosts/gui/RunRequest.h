#pragma once

#include "Messages.h"
#include "platform/Platform.h"

#include <iosfwd>

namespace px::gui {

// Runs one request as `pxmenu run` does: the request's environment and working folder, the
// desktop services beside `services` (the windows' Ui and pasteboard), the user's store, the
// `--key` check and the entry's command, returning once its work is over. Answers the exit
// status (2 bad arguments, 4 no entry with the tag, 5 the entry has other keys, else 0);
// messages go to `errors`.
int runHandedRequest(const handoff::Request& request, platform::Platform services,
                     std::ostream& errors);

} // namespace px::gui
