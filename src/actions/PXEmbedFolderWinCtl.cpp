#include "actions/PXEmbedFolderWinCtl.h"

#include "actions/FileHash.h"
#include "config/Localization.h"
#include "platform/Platform.h"

namespace px {

PXEmbedFolderWinCtl::PXEmbedFolderWinCtl() : foldIntoInput(localized("Untitled")) {}

std::vector<std::string> PXEmbedFolderWinCtl::modeTitles() {
    return {localized("Not classified"), localized("Classify by file extension")};
}

bool PXEmbedFolderWinCtl::isUsableName(const std::string& name) {
    return filehash::isValid(name) && name.find('/') == std::string::npos && name != "." &&
           name != "..";
}

void PXEmbedFolderWinCtl::open() {
    m_open = true;
    while (m_open) {
        auto answer = platform::ui().runEmbedDialog({foldIntoInput, modeTitles(), isUsableName});
        if (!answer) return onCancel();
        foldIntoInput = answer->name; // the field keeps what was typed
        onSure(answer->name, answer->mode);
    }
}

void PXEmbedFolderWinCtl::close() {
    m_open = false;
}

bool PXEmbedFolderWinCtl::onSure(const std::string& name, int mode) {
    if (!isUsableName(name)) return false;
    finish(name, mode);
    return true;
}

void PXEmbedFolderWinCtl::onCancel() {
    finish("", NotClassified);
}

void PXEmbedFolderWinCtl::finish(const std::string& name, int mode) {
    close();
    auto ending = std::move(handler);
    handler = nullptr;
    if (ending) ending(name, mode);
}

} // namespace px
