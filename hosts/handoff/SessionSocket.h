#pragma once

#include "Frame.h"
#include "support/ErrorOr.h"
#include "support/FileIO.h"

#include <chrono>
#include <string>
#include <sys/types.h>

// The per-user session endpoint of pxmenu-extension: the folder $XDG_RUNTIME_DIR/pxmenu (mode
// 0700, owned by the user), the lock file that elects the one process serving, and the socket
// it listens on.
namespace px::handoff {

struct SessionPaths {
    std::string folder;
    std::string lock;
    std::string socket;
};

// Creates the folder when missing; refuses one that another user owns or others may enter.
ErrorOr<SessionPaths> sessionPaths();

// Connects to the socket; ENOENT or ECONNREFUSED when nobody serves.
ErrorOr<io::FileDescriptor> connectTo(const std::string& socketPath);

// Writes all the bytes, retrying after interruptions.
ErrorOr<void> writeAll(int fd, std::string_view bytes);

// Reads one whole frame's fields, waiting at most `timeout` in all. Bytes of later frames stay
// in the reader for the next call.
ErrorOr<Fields> readFrame(int fd, FrameReader& reader, std::chrono::milliseconds timeout);

// The user id of the process at the other end of a connected socket (SO_PEERCRED).
ErrorOr<uid_t> peerUser(int fd);

} // namespace px::handoff
