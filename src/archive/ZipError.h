#pragma once

#include "support/ErrorOr.h"

#include <string>

typedef struct zip_error zip_error_t;

namespace px::archive {

// Turns a libzip error into an Error whose message starts with `what`.
Error zipError(const zip_error_t* error, const std::string& what);
// The same for the error code zip_open reports.
Error zipErrorFromCode(int code, const std::string& what);

} // namespace px::archive
