#pragma once

#include "config/PXMenuManager.h"

#include <memory>

namespace px::cli {

// The user's menu store, opened once for the command being run.
const std::shared_ptr<PXMenuManager>& userStore();

} // namespace px::cli
