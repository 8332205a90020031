#pragma once

#include "Messages.h"

#include <iosfwd>
#include <memory>

namespace px {
class FinderSync;
}

namespace px::gui {

// Starts one request as `pxmenu run` does: the request's environment and working folder, the
// services, the controller for the selection, the menu built for it, the tag decoded and the
// entry's command dispatched. The queues are drained afterwards by the event loop. Answers the
// exit status of the start (2 bad arguments, 4 no entry with the tag, else 0); messages go to
// `errors`. The Ui and pasteboard are installed by the caller. `sync` keeps the extension
// object, which the request's queued work refers to, until the request is over.
int startRequest(const handoff::Request& request, std::ostream& errors,
                 std::shared_ptr<FinderSync>& sync);

} // namespace px::gui
