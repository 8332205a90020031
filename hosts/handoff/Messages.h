#pragma once

#include "Frame.h"

#include <optional>
#include <string>
#include <vector>

// What the frames say: one request from `pxmenu run --ui gui` and the extension process's
// replies to it.
namespace px::handoff {

struct Request {
    std::vector<std::string> arguments;   // the `run` command's arguments, paths absolute
    std::string folder;                   // the caller's working folder
    std::vector<std::string> environment; // NAME=VALUE, only the variables the command needs
    bool wait = false;  // reply with the transcript and exit status once the work is over
    std::string script; // prompt-script text answering the real windows (driven mode); empty:
                        // a person answers them
};

std::string encodeRequest(const Request& request);
// An error names what is missing or malformed.
ErrorOr<Request> decodeRequest(const Fields& fields);

struct Reply {
    enum class Kind { Accepted, Refused, Finished };
    Kind kind = Kind::Accepted;
    std::string message;    // Refused: why
    std::string transcript; // Finished: the transcript lines
    std::string errors;     // Finished: what the command wrote to standard error
    int status = 0;         // Finished: the exit status
};

std::string encodeReply(const Reply& reply);
ErrorOr<Reply> decodeReply(const Fields& fields);

// The variables a request carries: XDG_*, LANG, LC_*, DISPLAY, WAYLAND_DISPLAY, the activation
// tokens, HOME and the few that choose programs and modules.
bool isCarriedVariable(std::string_view nameValue);
std::vector<std::string> carriedEnvironment(char** environ);

} // namespace px::handoff
