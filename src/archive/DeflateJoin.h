#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <vector>

namespace px::archive {

// Turns a complete raw deflate stream into one that another stream may follow: the final-block
// flag of its last block is cleared, and an empty stored block brings it to a byte boundary.
// The stream is walked block by block (inflating it) to find that last block.
ErrorOr<void> makeJoinable(std::vector<std::byte>& stream);

} // namespace px::archive
