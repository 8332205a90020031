#include "support/ErrorOr.h"

#include <cstring>

namespace px {

Error Error::fromErrno(std::string what, int err) {
    return Error{std::move(what) + ": " + std::strerror(err), err};
}

} // namespace px
