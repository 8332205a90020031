#include "platform/linux/TerminalUi.h"

#include "platform/PromptSupport.h"
#include "support/Localization.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <iostream>
#include <unistd.h>

namespace px::platform {

namespace {

std::optional<std::size_t> parseChoice(const std::string& line, std::size_t count) {
    if (line.find_first_not_of(" \t") == std::string::npos) return 0;
    std::size_t number = 0;
    const auto first = line.find_first_not_of(" \t");
    const auto last = line.find_last_not_of(" \t") + 1;
    const auto [end, error] = std::from_chars(line.data() + first, line.data() + last, number);
    if (error != std::errc() || end != line.data() + last || number < 1 || number > count)
        return std::nullopt;
    return number - 1;
}

std::string withDefault(const std::string& question, const std::string& fallback) {
    if (fallback.empty()) return question + ": ";
    return fmt::format("{} [{}]: ", question, fallback);
}

std::string progressLine(double fraction) {
    constexpr int kWidth = 30;
    if (std::isnan(fraction)) fraction = 0;
    fraction = std::clamp(fraction, 0.0, 1.0);
    const int filled = static_cast<int>(std::lround(fraction * kWidth));
    return fmt::format("\r[{}{}] {:.1f}%", std::string(filled, '#'),
                       std::string(kWidth - filled, '-'), fraction * 100);
}

} // namespace

std::optional<Ui::Color> parseHexColor(const std::string& text) {
    std::string_view digits = text;
    while (!digits.empty() && (digits.front() == ' ' || digits.front() == '\t'))
        digits.remove_prefix(1);
    while (!digits.empty() && (digits.back() == ' ' || digits.back() == '\t'))
        digits.remove_suffix(1);
    if (digits.starts_with('#')) digits.remove_prefix(1);
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 6 || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return Ui::Color{((value >> 16) & 0xff) / 255.0, ((value >> 8) & 0xff) / 255.0,
                     (value & 0xff) / 255.0};
}

TerminalUi::TerminalUi() : TerminalUi(STDIN_FILENO, std::cerr) {}

TerminalUi::TerminalUi(int inputFd, std::ostream& prompts) : m_input(inputFd), m_prompts(prompts) {}

template <typename Parse> auto TerminalUi::ask(const std::string& question, Parse parse) {
    for (;;) {
        m_prompts << question << std::flush;
        auto line = m_input.readLine();
        if (!line) {
            m_prompts << '\n' << std::flush;
            return decltype(parse(*line)){};
        }
        if (auto value = parse(*line)) return value;
        m_prompts << "Not understood; please try again.\n";
    }
}

std::optional<std::size_t> TerminalUi::askNumbered(const std::string& question,
                                                   const std::vector<std::string>& titles) {
    for (std::size_t index = 0; index < titles.size(); ++index)
        m_prompts << fmt::format("  {}) {}\n", index + 1, titles[index]);
    return ask(withDefault(question, "1"),
               [&](const std::string& line) { return parseChoice(line, titles.size()); });
}

int TerminalUi::runAlert(const Alert& alert) {
    endProgressLine();
    m_prompts << '\n' << alert.message << '\n';
    if (!alert.informative.empty()) m_prompts << alert.informative << '\n';
    const auto titles =
        alert.buttons.empty() ? std::vector<std::string>{localized("OK")} : alert.buttons;
    const auto choice = askNumbered("Choose a button", titles);
    if (!choice) return alertCancelResult(alert);
    return kFirstAlertButton + static_cast<int>(*choice);
}

bool TerminalUi::chooseFileType(const SaveRequest& request) {
    std::vector<std::string> titles;
    std::vector<std::size_t> tags;
    for (std::size_t tag : request.offeredTypeIndexes) {
        if (tag >= request.fileTypes.size() || !request.fileTypes[tag]) continue;
        titles.push_back(fileTypeTitle(*request.fileTypes[tag]));
        tags.push_back(tag);
    }
    if (tags.empty()) return true;
    if (request.onTypeChosen) request.onTypeChosen(request.fileTypes[tags.front()]);
    m_prompts << localized("File Type") << ":\n";
    const auto choice = askNumbered("File type", titles);
    if (!choice) return false;
    if (*choice != 0 && request.onTypeChosen)
        request.onTypeChosen(request.fileTypes[tags[*choice]]);
    return true;
}

std::optional<Ui::SaveResult> TerminalUi::runSavePanel(const SaveRequest& request) {
    endProgressLine();
    if (!request.message.empty()) m_prompts << '\n' << request.message << '\n';
    if (!chooseFileType(request)) return std::nullopt;
    const std::string proposed = resolvedPanelPath(request.name, request.directory);
    auto path = ask(withDefault("Save as", proposed), [&](const std::string& line) {
        const bool blank = line.find_first_not_of(" \t") == std::string::npos;
        return std::optional<std::string>(blank ? proposed
                                                : resolvedPanelPath(line, request.directory));
    });
    if (!path) return std::nullopt;
    SaveResult result{*path, {}};
    if (!request.passwordAccessory) return result;
    m_prompts << "Password: " << std::flush;
    auto password = m_input.readSecretLine();
    m_prompts << '\n' << std::flush;
    if (!password) return std::nullopt;
    result.password = *password;
    return result;
}

std::optional<std::string> TerminalUi::runOpenPanel(const OpenRequest& request) {
    endProgressLine();
    if (!request.message.empty()) m_prompts << '\n' << request.message << '\n';
    const bool folderDefault = request.chooseDirectories && !request.directory.empty();
    const std::string question = request.button.empty() ? std::string("Path") : request.button;
    return ask(withDefault(question, folderDefault ? request.directory : ""),
               [&](const std::string& line) -> std::optional<std::string> {
                   if (line.find_first_not_of(" \t") != std::string::npos)
                       return resolvedPanelPath(line, request.directory);
                   if (folderDefault) return request.directory;
                   return std::nullopt;
               });
}

std::optional<std::string> TerminalUi::runNameEntry(const NameRequest& request) {
    endProgressLine();
    if (!request.placeholder.empty()) m_prompts << '(' << request.placeholder << ")\n";
    m_prompts << withDefault(request.tip, request.defaultText) << std::flush;
    auto line = m_input.readLine();
    if (!line) {
        m_prompts << '\n' << std::flush;
        return std::nullopt;
    }
    return line->empty() ? request.defaultText : *line;
}

std::optional<Ui::EmbedResult> TerminalUi::runEmbedDialog(const EmbedRequest& request) {
    endProgressLine();
    std::size_t mode = 0;
    if (!request.modes.empty()) {
        auto choice = askNumbered("Mode", request.modes);
        if (!choice) return std::nullopt;
        mode = *choice;
    }
    m_prompts << withDefault("Folder name", request.defaultName) << std::flush;
    auto name = m_input.readLine();
    if (!name) {
        m_prompts << '\n' << std::flush;
        return std::nullopt;
    }
    return EmbedResult{static_cast<int>(mode), name->empty() ? request.defaultName : *name};
}

std::optional<Ui::Color> TerminalUi::pickColor() {
    endProgressLine();
    return ask(std::string("Colour (#rrggbb): "), parseHexColor);
}

void TerminalUi::progressOpen(std::function<void()>) {
    m_progressShown = false;
}

void TerminalUi::progressSetPercent(double fraction) {
    m_prompts << progressLine(fraction) << std::flush;
    m_progressShown = true;
}

void TerminalUi::progressSuccess(const std::string& text) {
    endProgressLine();
    m_prompts << text << '\n' << std::flush;
}

void TerminalUi::progressClose() {
    endProgressLine();
}

void TerminalUi::endProgressLine() {
    if (!m_progressShown) return;
    m_prompts << '\n' << std::flush;
    m_progressShown = false;
}

} // namespace px::platform
