#include "actions/RunRequest.h"

#include "actions/FullActions.h"
#include "extension/MenuBuilder.h"
#include "support/Queues.h"

namespace px {

DispatchResult runRequest(Request& request, std::int64_t tag) {
    queue::markMainThread();
    FullActions actions(request);
    BuiltMenu menu = buildMenu(request);
    DispatchResult result = dispatch(menu, tag, request, actions);
    queue::runUntilIdle();
    actions.context().clean();
    return result;
}

} // namespace px
