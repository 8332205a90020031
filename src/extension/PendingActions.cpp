// Actions this build does not carry yet: each answers with a clear message instead of silence.
#include "extension/FinderSync.h"

namespace px {

void FinderSync::convertItem(const PXMenuItem::Ptr&, const PXMenuItem::Ptr&) {
    actionNotAvailable("Convert to");
}
void FinderSync::moveAndCopyItem(const PXMenuItem::Ptr&, bool isCopy) {
    actionNotAvailable(isCopy ? "Copy to" : "Move to");
}
void FinderSync::cutPasteItem(const PXMenuItem::Ptr&) { actionNotAvailable("Cut Paste"); }

} // namespace px
