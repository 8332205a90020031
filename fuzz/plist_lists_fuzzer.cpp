// Feeds arbitrary bytes to the property-list reader and, when they make a dictionary, uses it as
// the whole shared suite: every list builder, the upgrade and the seeding must cope with
// whatever a hand-edited or corrupt settings file holds.
#include "ScratchHome.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "platform/MemorySettings.h"
#include "plist/PlistCodec.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace {

const px::fuzz::ScratchHome& home() {
    static px::fuzz::ScratchHome instance;
    return instance;
}

// Touches what a menu reads of each item, so that odd field values reach the title and icon
// lookups as well.
std::size_t readItems(const px::PXMenuItem::List& items) {
    std::size_t total = 0;
    for (const auto& item : items)
        total += item->menuTitle().size() + item->menuIcon().size() + item->cutPaths.size();
    return total;
}

std::size_t buildAllLists(const px::PXMenuManager& store) {
    px::PXMenuItem::List mainItems = store.menuItemArray();
    std::size_t total = readItems(mainItems);
    total += readItems(store.newFileTemplateMenuArray(true));
    total += readItems(store.newFileTemplateMenuArray(false));
    total += readItems(store.folderIconMenuArray());
    total += readItems(store.commonAppMenuArray());
    total += readItems(store.commonPathMenuArray());
    return total + px::PXMenuManager::belongAppMenuArray(mainItems).size();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string dataFolder = home().folder("data");
    auto parsed = px::plist::parse(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!parsed || !parsed.value().isDictionary()) return 0;

    auto suite = std::make_shared<px::platform::MemorySettings>();
    for (const auto& [key, value] : parsed.value().dictionary())
        suite->setObject(key, value);
    px::PXMenuManager store(suite, dataFolder);

    volatile std::size_t sink = buildAllLists(store);
    px::PXDefaultData(store).update();
    sink = sink + buildAllLists(store);
    px::PXDefaultData(store).setup();
    sink = sink + buildAllLists(store);
    (void)sink;
    return 0;
}
