#pragma once

#include "support/ErrorOr.h"

#include <string>
#include <string_view>

// Putting a new item at a path without ever leaving half of one: the item is made beside the
// target under a hidden temporary name and renamed into place once it is complete, so an item
// being replaced goes only when its successor is whole. Nothing here goes through a shell.
namespace px::creation {

// What to do when something is already at the target.
enum class Existing {
    Keep,    // fail with EEXIST and change nothing
    Replace, // put the new item in its place (a folder there is removed just before)
};

// A copy of the item at `source`: a file, or a folder with everything in it. A symbolic link
// given as the source is followed; links inside a folder are copied as links. Refused, with
// nothing changed, when the source is not a file or folder (a pipe, socket or device), and
// when source and target are the same item or one lies inside the other.
ErrorOr<void> copyItem(const std::string& source, const std::string& target, Existing existing);

// A new file holding `bytes`, with the usual permissions (0666 less the umask).
ErrorOr<void> writeFile(const std::string& target, std::string_view bytes, Existing existing);

} // namespace px::creation
