#include "platform/prompt/PromptScript.h"

#include "platform/PromptSupport.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iostream>
#include <nlohmann/json.hpp>

namespace px::platform {

namespace {

double roundedFraction(double fraction) {
    if (std::isnan(fraction)) fraction = 0;
    return std::round(std::clamp(fraction, 0.0, 1.0) * 1000) / 1000;
}

std::vector<std::size_t> typeTags(const Ui::SaveRequest& request) {
    std::vector<std::size_t> tags;
    for (const auto& type : request.fileTypes)
        tags.push_back(type.tag);
    return tags;
}

} // namespace

PromptScript::PromptScript(std::vector<ScriptAnswer> answers,
                           std::shared_ptr<Transcript> transcript, ExitHook exitHook)
    : m_answers(std::make_move_iterator(answers.begin()), std::make_move_iterator(answers.end())),
      m_transcript(transcript ? std::move(transcript) : std::make_shared<Transcript>()),
      m_exitHook(std::move(exitHook)), m_errors(&std::cerr) {}

std::optional<ScriptAnswer> PromptScript::take() {
    if (m_answers.empty()) {
        m_exitHook(kScriptEnded);
        return std::nullopt;
    }
    ScriptAnswer answer = std::move(m_answers.front());
    m_answers.pop_front();
    return answer;
}

void PromptScript::fail(const std::string& message) {
    *m_errors << "pxmenu: " << message << '\n' << std::flush;
    m_exitHook(kScriptEnded);
}

void PromptScript::misfit(const ScriptAnswer& answer, const char* prompt, const char* expected) {
    fail(fmt::format("script line {}: \"{}\" does not answer the {} prompt (expected {})",
                     answer.line, answer.source, prompt, expected));
}

int PromptScript::alert(const Ui::Alert& alert) {
    m_transcript->write({{"prompt", "alert"},
                         {"message", alert.message},
                         {"informative", alert.informative},
                         {"buttons", alert.buttons}});
    const int cancel = alertCancelResult(alert);
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return cancel;
    if (answer->kind != Kind::Button) {
        misfit(*answer, "alert", "button N or cancel");
        return cancel;
    }
    const int last = kFirstAlertButton + alertButtonCount(alert) - 1;
    if (answer->number >= kFirstAlertButton && answer->number <= last) return answer->number;
    fail(fmt::format("script line {}: \"{}\": the alert's buttons are {} to {}", answer->line,
                     answer->source, kFirstAlertButton, last));
    return cancel;
}

bool PromptScript::fitsType(const Ui::SaveRequest& request, const ScriptAnswer& answer) {
    const auto tags = typeTags(request);
    if (std::find(tags.begin(), tags.end(), static_cast<std::size_t>(answer.number)) != tags.end())
        return true;
    fail(fmt::format("script line {}: \"{}\": the file-type chooser offers {}", answer.line,
                     answer.source, fmt::join(tags, ", ")));
    return false;
}

std::optional<PromptScript::SaveAnswer> PromptScript::save(const Ui::SaveRequest& request) {
    m_transcript->write(
        {{"prompt", "save"}, {"name", request.name}, {"directory", request.directory}});
    const bool chooser = !request.fileTypes.empty();
    SaveAnswer result;
    auto answer = take();
    if (chooser && answer && answer->kind == Kind::Choose) {
        if (!fitsType(request, *answer)) return std::nullopt;
        result.typeBefore = static_cast<std::size_t>(answer->number);
        answer = take();
    }
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind != Kind::Save) {
        misfit(*answer, "save", chooser ? "save PATH, choose N or cancel" : "save PATH or cancel");
        return std::nullopt;
    }
    if (answer->password && !request.passwordAccessory) {
        fail(fmt::format("script line {}: \"{}\": this save panel has no password field",
                         answer->line, answer->source));
        return std::nullopt;
    }
    result.path = resolvedPanelPath(answer->text, request.directory);
    result.password = answer->password.value_or(std::string());
    if (chooser && !result.typeBefore && !m_answers.empty() &&
        m_answers.front().kind == Kind::Choose) {
        auto after = take();
        if (!fitsType(request, *after)) return std::nullopt;
        result.typeAfter = static_cast<std::size_t>(after->number);
    }
    return result;
}

std::optional<std::string> PromptScript::open(const Ui::OpenRequest& request) {
    m_transcript->write(
        {{"prompt", "open"}, {"button", request.button}, {"message", request.message}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind == Kind::Open) return resolvedPanelPath(answer->text, request.directory);
    misfit(*answer, "open", "open PATH or cancel");
    return std::nullopt;
}

std::optional<std::string> PromptScript::name(const Ui::NameRequest& request) {
    m_transcript->write(
        {{"prompt", "name"}, {"tip", request.tip}, {"default", request.defaultText}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind == Kind::Text) return answer->text;
    misfit(*answer, "name", "text TEXT or cancel");
    return std::nullopt;
}

std::optional<Ui::EmbedResult> PromptScript::embed(const Ui::EmbedRequest& request) {
    m_transcript->write(
        {{"prompt", "embed"}, {"name", request.defaultName}, {"modes", request.modes}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind != Kind::Embed) {
        misfit(*answer, "embed", "embed MODE TEXT or cancel");
        return std::nullopt;
    }
    const auto modeCount = std::max<std::size_t>(1, request.modes.size());
    if (static_cast<std::size_t>(answer->number) < modeCount)
        return Ui::EmbedResult{answer->number, answer->text};
    fail(fmt::format("script line {}: \"{}\": the modes are 0 to {}", answer->line, answer->source,
                     modeCount - 1));
    return std::nullopt;
}

std::optional<Ui::Color> PromptScript::color() {
    m_transcript->write({{"prompt", "color"}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind != Kind::Color) {
        misfit(*answer, "color", "color R G B or cancel");
        return std::nullopt;
    }
    const auto& rgb = answer->color;
    return Ui::Color{rgb[0] / 255.0, rgb[1] / 255.0, rgb[2] / 255.0};
}

bool PromptScript::progress(const Ui::Progress& progress) {
    if (m_stopped) return false;
    if (progress.success) {
        m_transcript->write({{"success", progress.text}});
        return false;
    }
    if (!progress.fraction) return false;
    const double value = roundedFraction(*progress.fraction);
    if (m_lastProgress != value) {
        m_lastProgress = value;
        m_transcript->write({{"progress", value}});
    }
    const bool stops = progress.cancelShown && !m_answers.empty() &&
                       m_answers.front().kind == Kind::Stop &&
                       value * 100 >= m_answers.front().number;
    if (stops) m_answers.pop_front();
    m_stopped = stops;
    return stops;
}

} // namespace px::platform
