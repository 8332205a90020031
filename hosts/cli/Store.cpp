#include "Store.h"

#include "platform/linux/UserStore.h"

namespace px::cli {

const std::shared_ptr<PXMenuManager>& userStore() {
    static const std::shared_ptr<PXMenuManager> store = platform::openUserStore();
    return store;
}

} // namespace px::cli
