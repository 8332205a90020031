#include "platform/linux/ScriptedUi.h"

#include "platform/PromptSupport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iostream>
#include <nlohmann/json.hpp>

namespace px::platform {

namespace {

using json = nlohmann::json;

bool hasChooser(const Ui::SaveRequest& request) {
    return !request.offeredTypeIndexes.empty();
}

bool isOffered(const Ui::SaveRequest& request, int tag) {
    const auto& offered = request.offeredTypeIndexes;
    return tag >= 0 && static_cast<std::size_t>(tag) < request.fileTypes.size() &&
           std::find(offered.begin(), offered.end(), static_cast<std::size_t>(tag)) !=
               offered.end();
}

void reportType(const Ui::SaveRequest& request, std::size_t tag) {
    if (request.onTypeChosen && tag < request.fileTypes.size())
        request.onTypeChosen(request.fileTypes[tag]);
}

double roundedFraction(double fraction) {
    if (std::isnan(fraction)) fraction = 0;
    return std::round(std::clamp(fraction, 0.0, 1.0) * 1000) / 1000;
}

} // namespace

void ScriptedUi::exitProcess(int status) {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    std::_Exit(status);
}

ScriptedUi::ScriptedUi(std::vector<ScriptAnswer> answers, std::shared_ptr<Transcript> transcript,
                       ExitHook exitHook)
    : m_answers(std::make_move_iterator(answers.begin()), std::make_move_iterator(answers.end())),
      m_transcript(transcript ? std::move(transcript) : std::make_shared<Transcript>()),
      m_exitHook(exitHook ? std::move(exitHook) : exitProcess), m_errors(&std::cerr) {}

ErrorOr<std::shared_ptr<ScriptedUi>> ScriptedUi::load(const std::string& scriptPath,
                                                      std::shared_ptr<Transcript> transcript,
                                                      ExitHook exitHook) {
    auto answers = TRY(loadScript(scriptPath));
    return std::make_shared<ScriptedUi>(std::move(answers), std::move(transcript),
                                        std::move(exitHook));
}

std::optional<ScriptAnswer> ScriptedUi::take() {
    if (m_answers.empty()) {
        m_exitHook(kScriptEnded);
        return std::nullopt;
    }
    ScriptAnswer answer = std::move(m_answers.front());
    m_answers.pop_front();
    return answer;
}

void ScriptedUi::fail(const std::string& message) {
    *m_errors << "pxmenu: " << message << '\n' << std::flush;
    m_exitHook(kScriptEnded);
}

void ScriptedUi::misfit(const ScriptAnswer& answer, const char* prompt, const char* expected) {
    fail(fmt::format("script line {}: \"{}\" does not answer the {} prompt (expected {})",
                     answer.line, answer.source, prompt, expected));
}

int ScriptedUi::runAlert(const Alert& alert) {
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

bool ScriptedUi::applyChoice(const SaveRequest& request, const ScriptAnswer& answer) {
    if (isOffered(request, answer.number)) {
        reportType(request, static_cast<std::size_t>(answer.number));
        return true;
    }
    fail(fmt::format("script line {}: \"{}\": the file-type chooser offers {}", answer.line,
                     answer.source, fmt::join(request.offeredTypeIndexes, ", ")));
    return false;
}

std::optional<Ui::SaveResult> ScriptedUi::saveResult(const SaveRequest& request,
                                                     const ScriptAnswer& answer) {
    if (answer.password && !request.passwordAccessory) {
        fail(fmt::format("script line {}: \"{}\": this save panel has no password field",
                         answer.line, answer.source));
        return std::nullopt;
    }
    return SaveResult{resolvedPanelPath(answer.text, request.directory),
                      answer.password.value_or(std::string())};
}

std::optional<Ui::SaveResult> ScriptedUi::runSavePanel(const SaveRequest& request) {
    m_transcript->write(
        {{"prompt", "save"}, {"name", request.name}, {"directory", request.directory}});
    const bool chooser = hasChooser(request);
    if (chooser) reportType(request, request.offeredTypeIndexes.front());
    auto answer = take();
    const bool choseFirst = chooser && answer && answer->kind == Kind::Choose;
    if (choseFirst && (!applyChoice(request, *answer) || !(answer = take()))) return std::nullopt;
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind != Kind::Save) {
        misfit(*answer, "save", chooser ? "save PATH, choose N or cancel" : "save PATH or cancel");
        return std::nullopt;
    }
    auto result = saveResult(request, *answer);
    const bool chooseAfter =
        chooser && !choseFirst && !m_answers.empty() && m_answers.front().kind == Kind::Choose;
    if (result && chooseAfter && !applyChoice(request, *take())) return std::nullopt;
    return result;
}

std::optional<std::string> ScriptedUi::runOpenPanel(const OpenRequest& request) {
    m_transcript->write(
        {{"prompt", "open"}, {"button", request.button}, {"message", request.message}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind == Kind::Open) return resolvedPanelPath(answer->text, request.directory);
    misfit(*answer, "open", "open PATH or cancel");
    return std::nullopt;
}

std::optional<std::string> ScriptedUi::runNameEntry(const NameRequest& request) {
    m_transcript->write(
        {{"prompt", "name"}, {"tip", request.tip}, {"default", request.defaultText}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind == Kind::Text) return answer->text;
    misfit(*answer, "name", "text TEXT or cancel");
    return std::nullopt;
}

std::optional<Ui::EmbedResult> ScriptedUi::runEmbedDialog(const EmbedRequest& request) {
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
        return EmbedResult{answer->number, answer->text};
    fail(fmt::format("script line {}: \"{}\": the modes are 0 to {}", answer->line, answer->source,
                     modeCount - 1));
    return std::nullopt;
}

std::optional<Ui::Color> ScriptedUi::pickColor() {
    m_transcript->write({{"prompt", "color"}});
    auto answer = take();
    if (!answer || answer->kind == Kind::Cancel) return std::nullopt;
    if (answer->kind != Kind::Color) {
        misfit(*answer, "color", "color R G B or cancel");
        return std::nullopt;
    }
    const auto& rgb = answer->color;
    return Color{rgb[0] / 255.0, rgb[1] / 255.0, rgb[2] / 255.0};
}

void ScriptedUi::progressOpen(std::function<void()>) {
    m_lastProgress.reset();
}

void ScriptedUi::progressSetPercent(double fraction) {
    const double value = roundedFraction(fraction);
    if (m_lastProgress == value) return;
    m_lastProgress = value;
    m_transcript->write({{"progress", value}});
}

void ScriptedUi::progressSuccess(const std::string& text) {
    m_transcript->write({{"success", text}});
}

void ScriptedUi::progressClose() {}

} // namespace px::platform
