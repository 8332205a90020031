#include "actions/PXSelectFileTypeViewCtl.h"

#include "actions/NewFile.h"
#include "config/PXMenuManager.h"
#include "support/Localization.h"

namespace px {

PXSelectFileTypeViewCtl::PXSelectFileTypeViewCtl(const PXMenuManager& store)
    : fileArray(store.newFileTemplateMenuArray(true)),
      m_withIcons(!store.sharedDefaults().boolForKey("pref check4")) {}

std::string PXSelectFileTypeViewCtl::tipLabel() {
    return localized("File Type") + ":";
}

std::string PXSelectFileTypeViewCtl::entryTitle(const PXMenuItem& item) {
    const std::string& extension = item.ext.empty() ? item.key : item.ext;
    return item.menuTitle() + " (." + extension + ")";
}

std::vector<PXSelectFileTypeViewCtl::Entry> PXSelectFileTypeViewCtl::entries() const {
    std::vector<Entry> result;
    for (std::size_t index = 0; index < fileArray.size(); ++index) {
        const auto& item = fileArray[index];
        if (!item || item->isSpecialFile || item->isNewFileFromWindow()) continue;
        result.push_back({index, entryTitle(*item), newfile::effectiveExtension(*item),
                          m_withIcons ? item->menuIcon() : ""});
    }
    return result;
}

void PXSelectFileTypeViewCtl::loadView() {
    const auto offered = entries();
    if (offered.empty()) return onSelectItem(std::nullopt);
    onSelectItem(offered.front().tag);
}

void PXSelectFileTypeViewCtl::onSelectItem(std::optional<std::size_t> tag) {
    if (!tag || *tag >= fileArray.size()) return selectItem(nullptr);
    selectItem(fileArray[*tag]);
}

void PXSelectFileTypeViewCtl::selectItem(const PXMenuItem::Ptr& item) {
    currentItem = item;
    if (selectHandler) selectHandler(item);
}

void PXSelectFileTypeViewCtl::attachTo(platform::Ui::SaveRequest& request) {
    request.fileTypes = entries();
    request.onTypeChosen = [this](std::size_t tag) { onSelectItem(tag); };
    if (request.fileTypes.empty()) selectItem(nullptr);
}

} // namespace px
