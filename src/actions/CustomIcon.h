#pragma once

#include "support/ErrorOr.h"

#include <string>

// An item's custom icon in the desktop's metadata store (GVfs), the "metadata::custom-icon"
// attribute that several file managers show instead of the item's usual icon.
namespace px::customicon {

inline constexpr const char* kAttribute = "metadata::custom-icon";

// True when a session bus can be reached without starting one: $DBUS_SESSION_BUS_ADDRESS
// names one, or $XDG_RUNTIME_DIR/bus is a socket. Without it the store is not asked at all,
// so GIO never tries to launch a bus of its own.
bool metadataStoreReachable();

// Stores the image file, as a file:// URI, as the item's custom icon. The error's code is
// ENOTSUP when there is no metadata store (no session bus, or GIO without GVfs).
ErrorOr<void> setMetadataIcon(const std::string& path, const std::string& imagePath);
// Takes the attribute away; also succeeds when none was set. ENOTSUP as above.
ErrorOr<void> removeMetadataIcon(const std::string& path);

} // namespace px::customicon
