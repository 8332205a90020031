#include "platform/prompt/ScriptAnswer.h"

#include "support/FileIO.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>

namespace px::platform {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<int> integer(std::string_view token) {
    int value = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    if (error != std::errc() || end != token.data() + token.size() || token.empty())
        return std::nullopt;
    return value;
}

// Splits off the first blank-separated word; `rest` keeps what follows the one blank after it.
std::string_view firstWord(std::string_view text, std::string_view& rest) {
    const auto end = text.find_first_of(kBlanks);
    if (end == std::string_view::npos) {
        rest = {};
        return text;
    }
    rest = text.substr(end + 1);
    return text.substr(0, end);
}

Error lineError(int lineNumber, std::string_view line, std::string_view what) {
    return Error{fmt::format("script line {}: \"{}\": {}", lineNumber, line, what), 0};
}

using Kind = ScriptAnswer::Kind;

ErrorOr<ScriptAnswer> withNumber(ScriptAnswer answer, std::string_view rest, int minimum) {
    auto value = integer(trimmed(rest));
    if (!value || *value < minimum)
        return lineError(answer.line, answer.source, "expects one whole number");
    answer.number = *value;
    return answer;
}

ErrorOr<ScriptAnswer> withPath(ScriptAnswer answer, std::string_view rest) {
    if (answer.kind == Kind::Save) {
        constexpr std::string_view kPassword = " password";
        if (auto at = rest.find(" password "); at != std::string_view::npos) {
            answer.password = std::string(rest.substr(at + kPassword.size() + 1));
            rest = rest.substr(0, at);
        } else if (rest.ends_with(kPassword)) {
            answer.password = std::string();
            rest.remove_suffix(kPassword.size());
        }
    }
    answer.text = std::string(trimmed(rest));
    if (answer.text.empty()) return lineError(answer.line, answer.source, "expects a path");
    return answer;
}

ErrorOr<ScriptAnswer> withEmbed(ScriptAnswer answer, std::string_view rest) {
    std::string_view name;
    auto mode = integer(firstWord(trimmed(rest), name));
    if (!mode || *mode < 0)
        return lineError(answer.line, answer.source, "expects a mode number and a name");
    answer.number = *mode;
    answer.text = std::string(name);
    return answer;
}

ErrorOr<ScriptAnswer> withColor(ScriptAnswer answer, std::string_view rest) {
    rest = trimmed(rest);
    for (int& component : answer.color) {
        std::string_view next;
        auto value = integer(firstWord(rest, next));
        if (!value || *value < 0 || *value > 255)
            return lineError(answer.line, answer.source, "expects three numbers from 0 to 255");
        component = *value;
        rest = trimmed(next);
    }
    if (!rest.empty())
        return lineError(answer.line, answer.source, "expects three numbers from 0 to 255");
    return answer;
}

ErrorOr<ScriptAnswer> withArguments(ScriptAnswer answer, std::string_view rest) {
    switch (answer.kind) {
    case Kind::Button:
        return withNumber(std::move(answer), rest, 0);
    case Kind::Choose:
        return withNumber(std::move(answer), rest, 0);
    case Kind::Save:
    case Kind::Open:
        return withPath(std::move(answer), rest);
    case Kind::Text:
        answer.text = std::string(rest);
        return answer;
    case Kind::Embed:
        return withEmbed(std::move(answer), rest);
    case Kind::Color:
        return withColor(std::move(answer), rest);
    case Kind::Stop:
        if (trimmed(rest).empty()) return answer;
        return withNumber(std::move(answer), rest, 0);
    case Kind::Cancel:
        if (!trimmed(rest).empty())
            return lineError(answer.line, answer.source, "takes no arguments");
        return answer;
    }
    return answer;
}

constexpr Kind kAllKinds[] = {Kind::Button, Kind::Save,  Kind::Open,   Kind::Text, Kind::Choose,
                              Kind::Embed,  Kind::Color, Kind::Cancel, Kind::Stop};

} // namespace

const char* scriptWord(ScriptAnswer::Kind kind) {
    switch (kind) {
    case Kind::Button:
        return "button";
    case Kind::Save:
        return "save";
    case Kind::Open:
        return "open";
    case Kind::Text:
        return "text";
    case Kind::Choose:
        return "choose";
    case Kind::Embed:
        return "embed";
    case Kind::Color:
        return "color";
    case Kind::Cancel:
        return "cancel";
    case Kind::Stop:
        return "stop";
    }
    return "?";
}

ErrorOr<ScriptAnswer> parseScriptLine(std::string_view line, int lineNumber) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    ScriptAnswer answer;
    answer.line = lineNumber;
    answer.source = std::string(line);
    const std::string_view content =
        line.substr(std::min(line.size(), line.find_first_not_of(kBlanks)));
    std::string_view rest;
    const std::string_view word = firstWord(content, rest);
    for (Kind kind : kAllKinds) {
        if (word != scriptWord(kind)) continue;
        answer.kind = kind;
        return withArguments(std::move(answer), rest);
    }
    return lineError(
        lineNumber, line,
        "unknown answer (use button, save, open, text, choose, embed, color, cancel or stop)");
}

ErrorOr<std::vector<ScriptAnswer>> parseScript(std::string_view text) {
    std::vector<ScriptAnswer> answers;
    int lineNumber = 0;
    while (!text.empty()) {
        const auto end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        ++lineNumber;
        if (line.ends_with('\r')) line.remove_suffix(1);
        const auto content = trimmed(line);
        if (content.empty() || content.starts_with('#')) continue;
        answers.push_back(TRY(parseScriptLine(line, lineNumber)));
    }
    return answers;
}

ErrorOr<std::vector<ScriptAnswer>> loadScript(const std::string& path) {
    auto text = io::readWholeFile(path);
    if (text.isError())
        return Error{
            fmt::format("cannot read the prompt script {}: {}", path, text.error().message),
            text.error().code};
    return parseScript(text.value());
}

} // namespace px::platform
