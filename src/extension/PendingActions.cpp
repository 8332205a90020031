// Actions this build does not carry yet: each answers with a clear message instead of silence.
#include "extension/FinderSync.h"

namespace px {

void FinderSync::convertItem(const PXMenuItem::Ptr&, const PXMenuItem::Ptr&) {
    actionNotAvailable("Convert to");
}

} // namespace px
