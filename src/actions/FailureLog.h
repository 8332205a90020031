#pragma once

#include "support/ErrorOr.h"

#include <cstdio>
#include <fmt/format.h>

namespace px {

// Notes a failure that the action itself does not show, on standard error.
inline void logFailure(const Error& error) {
    fmt::print(stderr, "pxmenu: {}\n", error.message);
}

} // namespace px
