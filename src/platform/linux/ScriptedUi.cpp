#include "platform/linux/ScriptedUi.h"

#include "support/Queues.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace px::platform {

namespace {

void reportType(const Ui::SaveRequest& request, std::optional<std::size_t> tag) {
    if (request.onTypeChosen && tag) request.onTypeChosen(*tag);
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
    : m_script(std::move(answers), std::move(transcript),
               exitHook ? std::move(exitHook) : exitProcess) {}

ErrorOr<std::shared_ptr<ScriptedUi>> ScriptedUi::load(const std::string& scriptPath,
                                                      std::shared_ptr<Transcript> transcript,
                                                      ExitHook exitHook) {
    auto answers = TRY(loadScript(scriptPath));
    return std::make_shared<ScriptedUi>(std::move(answers), std::move(transcript),
                                        std::move(exitHook));
}

int ScriptedUi::runAlert(const Alert& alert) {
    return m_script.alert(alert);
}

std::optional<Ui::SaveResult> ScriptedUi::runSavePanel(const SaveRequest& request) {
    // The chooser reports its first entry as soon as the panel shows it.
    if (!request.fileTypes.empty()) reportType(request, request.fileTypes.front().tag);
    auto answer = m_script.save(request);
    if (!answer) return std::nullopt;
    reportType(request, answer->typeBefore);
    reportType(request, answer->typeAfter);
    return SaveResult{answer->path, answer->password};
}

std::optional<std::string> ScriptedUi::runOpenPanel(const OpenRequest& request) {
    return m_script.open(request);
}

std::optional<std::string> ScriptedUi::runNameEntry(const NameRequest& request) {
    return m_script.name(request);
}

std::optional<Ui::EmbedResult> ScriptedUi::runEmbedDialog(const EmbedRequest& request) {
    return m_script.embed(request);
}

std::optional<Ui::Color> ScriptedUi::pickColor() {
    return m_script.color();
}

void ScriptedUi::progressOpen(std::function<void()> onCancel) {
    m_onCancel = std::move(onCancel);
    m_script.progressOpened();
}

void ScriptedUi::progressShow(const Progress& progress) {
    if (m_script.progress(progress) && m_onCancel) queue::enterForeground(m_onCancel);
}

void ScriptedUi::progressClose() {
    m_onCancel = nullptr;
}

} // namespace px::platform
