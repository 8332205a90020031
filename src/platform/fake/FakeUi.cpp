#include "platform/fake/FakeUi.h"

namespace px::platform {

namespace {

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.push_back(line);
    return result;
}

} // namespace

FakeUi::FakeUi()
    : m_script(std::make_unique<ScriptedUi>(std::vector<ScriptAnswer>{},
                                            std::make_shared<Transcript>(m_transcriptText),
                                            [this](int) { ++m_endings; })) {
    m_script->setErrorStream(m_errorText);
}

FakeUi& FakeUi::answer(std::string_view line) {
    auto parsed = parseScriptLine(line, ++m_answerLines);
    if (parsed.isError())
        m_parseErrors.push_back(parsed.error().message);
    else
        m_script->append(parsed.releaseValue());
    return *this;
}

FakeUi& FakeUi::answers(std::initializer_list<std::string_view> lines) {
    for (auto line : lines)
        answer(line);
    return *this;
}

std::vector<nlohmann::json> FakeUi::transcript() const {
    std::vector<nlohmann::json> result;
    for (const auto& line : lines(m_transcriptText.str()))
        result.push_back(nlohmann::json::parse(line));
    return result;
}

std::vector<std::string> FakeUi::scriptErrors() const {
    auto result = m_parseErrors;
    for (auto& line : lines(m_errorText.str()))
        result.push_back(std::move(line));
    return result;
}

int FakeUi::unansweredPrompts() const {
    return m_endings - static_cast<int>(lines(m_errorText.str()).size());
}

void FakeUi::cancelProgress() {
    if (m_onCancel) m_onCancel();
}

int FakeUi::runAlert(const Alert& alert) {
    m_alerts.push_back(alert);
    return m_script->runAlert(alert);
}

std::optional<Ui::SaveResult> FakeUi::runSavePanel(const SaveRequest& request) {
    m_saves.push_back(request);
    return m_script->runSavePanel(request);
}

std::optional<std::string> FakeUi::runOpenPanel(const OpenRequest& request) {
    m_opens.push_back(request);
    return m_script->runOpenPanel(request);
}

std::optional<std::string> FakeUi::runNameEntry(const NameRequest& request) {
    m_names.push_back(request);
    return m_script->runNameEntry(request);
}

std::optional<Ui::EmbedResult> FakeUi::runEmbedDialog(const EmbedRequest& request) {
    m_embeds.push_back(request);
    return m_script->runEmbedDialog(request);
}

std::optional<Ui::Color> FakeUi::pickColor() {
    ++m_colorRequests;
    return m_script->pickColor();
}

void FakeUi::progressOpen(std::function<void()> onCancel) {
    m_onCancel = std::move(onCancel);
    m_progress.push_back({ProgressEvent::Kind::Open, 0, {}});
    m_script->progressOpen(m_onCancel);
}

void FakeUi::progressShow(const Progress& progress) {
    m_lastShown = progress;
    if (progress.success)
        m_progress.push_back({ProgressEvent::Kind::Success, 0, progress.text});
    else if (progress.fraction)
        m_progress.push_back({ProgressEvent::Kind::Percent, *progress.fraction, {}});
    m_script->progressShow(progress);
}

void FakeUi::progressClose() {
    m_progress.push_back({ProgressEvent::Kind::Close, 0, {}});
    m_script->progressClose();
}

} // namespace px::platform
