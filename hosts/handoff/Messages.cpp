#include "Messages.h"

#include <charconv>
#include <fmt/format.h>

namespace px::handoff {

namespace {

enum Tag : std::uint8_t {
    kArgument = 1,
    kFolder = 2,
    kVariable = 3,
    kWait = 4,
    kScript = 5,
    kAccepted = 16,
    kRefused = 17,
    kTranscript = 18,
    kErrors = 19,
    kStatus = 20,
};

constexpr std::string_view kCarriedNames[] = {"LANG",
                                              "LANGUAGE",
                                              "DISPLAY",
                                              "WAYLAND_DISPLAY",
                                              "XDG_ACTIVATION_TOKEN",
                                              "DESKTOP_STARTUP_ID",
                                              "HOME",
                                              "PATH",
                                              "TERMINAL",
                                              "PXMENU_LIBDIR",
                                              "DBUS_SESSION_BUS_ADDRESS"};

} // namespace

std::string encodeRequest(const Request& request) {
    Fields fields;
    for (const auto& argument : request.arguments)
        fields.push_back({kArgument, argument});
    fields.push_back({kFolder, request.folder});
    for (const auto& variable : request.environment)
        fields.push_back({kVariable, variable});
    if (request.wait) fields.push_back({kWait, {}});
    if (!request.script.empty()) fields.push_back({kScript, request.script});
    return encodeFrame(fields);
}

ErrorOr<Request> decodeRequest(const Fields& fields) {
    Request request;
    bool hasFolder = false;
    for (const auto& field : fields) {
        switch (field.tag) {
        case kArgument:
            request.arguments.push_back(field.bytes);
            break;
        case kFolder:
            request.folder = field.bytes;
            hasFolder = true;
            break;
        case kVariable:
            if (field.bytes.find('=') == std::string::npos)
                return Error{"an environment field has no '='", EPROTO};
            request.environment.push_back(field.bytes);
            break;
        case kWait:
            request.wait = true;
            break;
        case kScript:
            request.script = field.bytes;
            break;
        default:
            return Error{fmt::format("a request field has the unknown tag {}", field.tag), EPROTO};
        }
    }
    if (!hasFolder || !request.folder.starts_with('/'))
        return Error{"the request names no absolute working folder", EPROTO};
    if (request.arguments.empty()) return Error{"the request has no arguments", EPROTO};
    return request;
}

std::string encodeReply(const Reply& reply) {
    switch (reply.kind) {
    case Reply::Kind::Accepted:
        return encodeFrame({{kAccepted, {}}});
    case Reply::Kind::Refused:
        return encodeFrame({{kRefused, reply.message}});
    case Reply::Kind::Finished:
        return encodeFrame({{kTranscript, reply.transcript},
                            {kErrors, reply.errors},
                            {kStatus, std::to_string(reply.status)}});
    }
    return {};
}

ErrorOr<Reply> decodeReply(const Fields& fields) {
    Reply reply;
    if (fields.empty()) return Error{"an empty reply", EPROTO};
    for (const auto& field : fields) {
        switch (field.tag) {
        case kAccepted:
            reply.kind = Reply::Kind::Accepted;
            break;
        case kRefused:
            reply.kind = Reply::Kind::Refused;
            reply.message = field.bytes;
            break;
        case kTranscript:
            reply.kind = Reply::Kind::Finished;
            reply.transcript = field.bytes;
            break;
        case kErrors:
            reply.errors = field.bytes;
            break;
        case kStatus: {
            const auto* end = field.bytes.data() + field.bytes.size();
            if (std::from_chars(field.bytes.data(), end, reply.status).ptr != end)
                return Error{"a reply's exit status is not a number", EPROTO};
            break;
        }
        default:
            return Error{fmt::format("a reply field has the unknown tag {}", field.tag), EPROTO};
        }
    }
    return reply;
}

bool isCarriedVariable(std::string_view nameValue) {
    const auto equals = nameValue.find('=');
    if (equals == std::string_view::npos) return false;
    const auto name = nameValue.substr(0, equals);
    if (name.starts_with("XDG_") || name.starts_with("LC_")) return true;
    for (auto carried : kCarriedNames)
        if (name == carried) return true;
    return false;
}

std::vector<std::string> carriedEnvironment(char** environ) {
    std::vector<std::string> result;
    for (char** entry = environ; entry && *entry; ++entry)
        if (isCarriedVariable(*entry)) result.emplace_back(*entry);
    return result;
}

} // namespace px::handoff
