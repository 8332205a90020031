#include "archive/ZipError.h"

#include <cerrno>
#include <zip.h>

namespace px::archive {

namespace {

// The errno-like code of a libzip error, so callers can tell a cancel or a full disk apart.
int codeOf(const zip_error_t* error) {
    int zipCode = zip_error_code_zip(error);
    if (zipCode == ZIP_ER_CANCELLED) return ECANCELED;
    if (zip_error_system_type(error) == ZIP_ET_SYS && zip_error_code_system(error) != 0)
        return zip_error_code_system(error);
    return zipCode == ZIP_ER_MEMORY ? ENOMEM : EIO;
}

} // namespace

Error zipError(const zip_error_t* error, const std::string& what) {
    // zip_error_strerror caches its text in the error, hence the copy.
    zip_error_t copy;
    zip_error_init(&copy);
    zip_error_set(&copy, zip_error_code_zip(error), zip_error_code_system(error));
    Error result{what + ": " + zip_error_strerror(&copy), codeOf(&copy)};
    zip_error_fini(&copy);
    return result;
}

Error zipErrorFromCode(int code, const std::string& what) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    Error result = zipError(&error, what);
    zip_error_fini(&error);
    return result;
}

} // namespace px::archive
