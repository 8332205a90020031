#include "actions/PXSelectFileTypeViewCtl.h"

#include "config/PXMenuManager.h"
#include "support/Localization.h"

namespace px {

PXSelectFileTypeViewCtl::PXSelectFileTypeViewCtl(const PXMenuManager& store)
    : fileArray(store.newFileTemplateMenuArray(true)),
      m_withIcons(!store.sharedDefaults().boolForKey("pref check4")) {}

std::string PXSelectFileTypeViewCtl::tipLabel() {
    return localized("File Type") + ":";
}

std::vector<PXSelectFileTypeViewCtl::Entry> PXSelectFileTypeViewCtl::entries() const {
    return platform::fileTypeEntries(fileArray, m_withIcons);
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
