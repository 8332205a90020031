#include "actions/CustomIcon.h"

#include "support/GlibOwners.h"

#include <cerrno>
#include <cstdlib>
#include <gio/gio.h>
#include <memory>
#include <sys/stat.h>

namespace px::customicon {

namespace {

using OwnedFile = glib::Object<GFile>;
using OwnedError = glib::Error;

Error noStore() {
    return Error{"no metadata store is running", ENOTSUP};
}

Error failure(const std::string& what, const std::string& path, GError* raw) {
    OwnedError error(raw);
    const bool unsupported =
        error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED);
    std::string reason = error ? error->message : "unknown error";
    return Error{"cannot " + what + " the custom icon of " + path + ": " + reason,
                 unsupported ? ENOTSUP : EIO};
}

std::string fileUri(const std::string& path) {
    OwnedFile file(g_file_new_for_path(path.c_str()));
    glib::String uri(g_file_get_uri(file.get()));
    return uri ? std::string(uri.get()) : std::string();
}

} // namespace

bool metadataStoreReachable() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address)
        return true;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (!runtime || !*runtime) return false;
    const std::string bus = std::string(runtime) + "/bus";
    struct stat info {};
    return ::stat(bus.c_str(), &info) == 0 && S_ISSOCK(info.st_mode);
}

ErrorOr<void> setMetadataIcon(const std::string& path, const std::string& imagePath) {
    if (!metadataStoreReachable()) return noStore();
    OwnedFile file(g_file_new_for_path(path.c_str()));
    GError* error = nullptr;
    if (g_file_set_attribute_string(file.get(), kAttribute, fileUri(imagePath).c_str(),
                                    G_FILE_QUERY_INFO_NONE, nullptr, &error))
        return {};
    return failure("set", path, error);
}

ErrorOr<void> removeMetadataIcon(const std::string& path) {
    if (!metadataStoreReachable()) return noStore();
    OwnedFile file(g_file_new_for_path(path.c_str()));
    GError* error = nullptr;
    if (g_file_set_attribute(file.get(), kAttribute, G_FILE_ATTRIBUTE_TYPE_INVALID, nullptr,
                             G_FILE_QUERY_INFO_NONE, nullptr, &error))
        return {};
    return failure("remove", path, error);
}

} // namespace px::customicon
