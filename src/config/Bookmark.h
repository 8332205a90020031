#pragma once

#include "plist/Value.h"

#include <optional>
#include <string>

// Grants kept across processes. Without a sandbox there is nothing to sign, so a bookmark is
// the granted path itself, stored as property-list data holding the path's UTF-8 bytes; the
// stored form stays "path -> data" whatever a later build puts in the data.
namespace px::bookmark {

// The bookmark for an absolute path that exists; nothing for anything else.
std::optional<plist::Value> create(const std::string& path);

struct Resolution {
    std::string path;
    bool stale = false; // the granted folder no longer exists
};
// The path a bookmark names; nothing when the value is not bookmark data (not data, empty, not
// an absolute path, an embedded NUL).
std::optional<Resolution> resolve(const plist::Value& bookmark);

// Starts using a granted location. Always succeeds: the process needs no token to use it.
bool startAccessing(const std::string& url);

} // namespace px::bookmark
