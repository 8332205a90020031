#pragma once

#include <string>
#include <string_view>

namespace px::mounts {

// Whether a path lies on a file system of this machine rather than a network share (NFS, SMB,
// sshfs, a GIO FUSE bridge...). Decided from the mount table alone, without touching the path,
// so a hung share cannot block the answer. Paths the table does not cover count as local.
bool isOnLocalMount(const std::string& path);

// The same decision from a mount table's text (the format of /proc/self/mountinfo).
bool isOnLocalMount(const std::string& path, std::string_view mountInfo);

} // namespace px::mounts
