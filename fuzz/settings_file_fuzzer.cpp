// Feeds whole settings files to the real settings suite: the bytes become group.plist and the
// menus are built and set up from it, as the file manager and `pxmenu setup` would. Whatever the
// file holds, the lists come out usable, and a damaged file is kept beside with every byte.
#include "ScratchHome.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "plist/PlistCodec.h"
#include "support/FileIO.h"
#include "support/Xdg.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace {

const px::fuzz::ScratchHome& home() {
    static px::fuzz::ScratchHome instance;
    return instance;
}

std::size_t buildAllLists() {
    std::size_t total = px::PXMenuManager::menuItemArray().size();
    total += px::PXMenuManager::newFileTemplateMenuArray(true).size();
    total += px::PXMenuManager::folderIconMenuArray().size();
    total += px::PXMenuManager::commonAppMenuArray().size();
    return total + px::PXMenuManager::commonPathMenuArray().size();
}

void check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "settings_file_fuzzer: %s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string dataFolder = home().folder("data");
    static const std::string folder = px::xdg::settingsFolder();
    const std::string path = folder + "/group.plist";
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    std::filesystem::create_directories(folder, ignored);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    check(!px::io::replaceFileAtomically(path, bytes).isError(), "cannot write the input");

    px::PXMenuManager::configure(nullptr, dataFolder); // a fresh suite on the file
    volatile std::size_t sink = buildAllLists();
    px::PXDefaultData::setup();
    sink = sink + buildAllLists();
    (void)sink;

    auto stored = px::plist::readFile(path);
    check(!stored.isError() && stored.value().isDictionary(), "the suite is left unreadable");
    check(stored.value().get("array right menu").isArray(), "the main list is left damaged");
    if (px::io::exists(path + ".broken"))
        check(px::io::readWholeFile(path + ".broken").value() == bytes,
              "the damaged file is not kept whole");
    px::PXMenuManager::configure(nullptr, dataFolder);
    return 0;
}
