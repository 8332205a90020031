#pragma once

#include "support/ErrorOr.h"

#include <optional>
#include <string>
#include <string_view>

// The permission bits an item had before it was locked, kept in its extended attribute
// "user.pxmenu.mode" as octal text ("0640"). Symbolic links are followed.
namespace px::modeattr {

inline constexpr const char* kName = "user.pxmenu.mode";

std::string encode(unsigned mode);
// The bits of octal text of one to six digits within 07777; nothing for anything else.
std::optional<unsigned> decode(std::string_view text);

// Stores the bits. The error's code is ENOTSUP where the file system keeps no user attributes.
ErrorOr<void> save(const std::string& path, unsigned mode);
// The stored bits; nothing when none are stored, they cannot be read, or they are not a mode.
std::optional<unsigned> load(const std::string& path);
// Removes the attribute; nothing happens when there is none.
void forget(const std::string& path);

} // namespace px::modeattr
