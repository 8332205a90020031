#pragma once

#include "support/ErrorOr.h"

#include <string>

namespace px {

// Moves the item at `from` to `to` with rename(2), never over an existing item: when `to` is
// taken, the item goes to the first free "<base>-<n><.ext>" beside it instead. Answers where the
// item landed. On failure the item is left where it was.
ErrorOr<std::string> moveToFreeName(const std::string& from, const std::string& to);

} // namespace px
