#include "actions/PXSelectFileTypeViewCtl.h"

#include "config/Localization.h"
#include "config/PXMenuManager.h"

namespace px {

PXSelectFileTypeViewCtl::PXSelectFileTypeViewCtl()
    : fileArray(PXMenuManager::newFileTemplateMenuArray(true)) {}

std::string PXSelectFileTypeViewCtl::tipLabel() {
    return localized("File Type") + ":";
}

std::vector<PXSelectFileTypeViewCtl::Entry> PXSelectFileTypeViewCtl::entries() const {
    const bool withIcons = !PXMenuManager::sharedDefaults().boolForKey("pref check4");
    return platform::fileTypeEntries(fileArray, withIcons);
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
    request.fileTypes = fileArray;
    request.offeredTypeIndexes.clear();
    for (const auto& entry : entries())
        request.offeredTypeIndexes.push_back(entry.tag);
    request.onTypeChosen = [this](const PXMenuItem::Ptr& item) { selectItem(item); };
    if (request.offeredTypeIndexes.empty()) selectItem(nullptr);
}

} // namespace px
