#include "actions/EmbedFolderPrompt.h"

#include "support/FileHash.h"
#include "support/Localization.h"

namespace px {

EmbedFolderPrompt::EmbedFolderPrompt(platform::Ui& ui)
    : foldIntoInput(localized("Untitled")), m_ui(ui) {}

std::vector<std::string> EmbedFolderPrompt::modeTitles() {
    return {localized("Not classified"), localized("Classify by file extension")};
}

bool EmbedFolderPrompt::isUsableName(const std::string& name) {
    return filehash::isValid(name) && name.find('/') == std::string::npos && name != "." &&
           name != "..";
}

void EmbedFolderPrompt::open() {
    m_open = true;
    while (m_open) {
        auto answer = m_ui.runEmbedDialog({foldIntoInput, modeTitles()});
        if (!answer) return onCancel();
        foldIntoInput = answer->name; // the field keeps what was typed
        onSure(answer->name, answer->mode);
    }
}

void EmbedFolderPrompt::close() {
    m_open = false;
}

bool EmbedFolderPrompt::onSure(const std::string& name, int mode) {
    if (!isUsableName(name)) return false;
    finish(name, mode);
    return true;
}

void EmbedFolderPrompt::onCancel() {
    finish("", NotClassified);
}

void EmbedFolderPrompt::finish(const std::string& name, int mode) {
    close();
    auto ending = std::move(handler);
    handler = nullptr;
    if (ending) ending(name, mode);
}

} // namespace px
