#include "FolderIconFixture.h"
#include "actions/FolderIconImage.h"
#include "actions/PixbufImage.h"
#include "config/IconTheme.h"
#include "support/GioFileInfo.h"

#include <chrono>
#include <filesystem>

using namespace px;
using namespace px::test;

namespace {

class FolderIconActionTest : public FolderIconFixture {
  protected:
    static std::string picture(const std::string& name) {
        return *dataDirectory() + "/icons/" + name + ".svg";
    }
    static std::string directoryFile(const std::string& folder) { return folder + "/.directory"; }
};

// Folders get the icon (other settings in .directory kept), files and vanished items are passed
// over, and a .directory that is not a file is left as it is; then Recover leads the submenu.
TEST_F(FolderIconActionTest, EveryFolderOfTheSelectionIsChangedAndNothingElse) {
    const std::string first = work.mkdir("a \"quoted\" $(reboot)"), second = work.mkdir("b");
    const std::string gone = work.mkdir("gone"), odd = work.mkdir("odd");
    work.write("b/.directory", "[Dolphin]\nViewMode=1\n");
    EXPECT_EQ(find(iconMenu({first}), "Recover Icon"), nullptr);
    work.write("odd/.directory/inside", "kept");
    const std::string file = work.write("notes.txt", "text");
    ASSERT_TRUE(chooseIcon({first, file, gone, odd, second}, "love",
                           [&] { std::filesystem::remove(gone); }));
    const std::string expected = "[Desktop Entry]\nIcon=" + picture("love") + "\n";
    EXPECT_EQ(readFile(directoryFile(first)), expected);
    EXPECT_EQ(readFile(directoryFile(second)), "[Dolphin]\nViewMode=1\n\n" + expected);
    EXPECT_FALSE(exists(gone));
    EXPECT_EQ(readFile(odd + "/.directory/inside"), "kept");
    EXPECT_FALSE(exists(directoryFile(work.path())));
    EXPECT_EQ(readFile(file), "text");
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_EQ(iconMenu({first}).at(0).title, localized("Recover"));

    ASSERT_TRUE(chooseIcon({first, file, second}, "Recover Icon"));
    EXPECT_FALSE(exists(directoryFile(first)));
    EXPECT_EQ(readFile(directoryFile(second)), "[Dolphin]\nViewMode=1\n");
    EXPECT_TRUE(exists(file) && exists(first));
}

TEST_F(FolderIconActionTest, UserImagesComeFromTheFolderIconFolder) {
    const std::string image = store->folderIconFolder() + "/mine.png";
    if (!pixbuf::renderSquarePNG(picture("star"), image, 32)) GTEST_SKIP() << "no SVG loader";
    auto entry = [this](const std::string& key, const std::string& iconPath,
                        const std::string& icon) {
        auto dict = plist::Value::makeMutableDictionary();
        dict.set("key", plist::Value(key));
        dict.set("iconPath", plist::Value(iconPath));
        dict.set("icon", plist::Value(icon));
        store->addMenuKey(menukey::kFolderIcon, dict.frozen(), false);
    };
    entry("by path", image, "");
    entry("by name", "mine.png", "");
    entry("missing file", image + ".gone", "react");
    entry("nothing at all", "/no/such.png", "no-such-resource");
    const std::string folder = work.mkdir("f");

    ASSERT_TRUE(chooseIcon({folder}, "by path"));
    EXPECT_EQ(readFile(directoryFile(folder)), "[Desktop Entry]\nIcon=" + image + "\n");
    ASSERT_TRUE(chooseIcon({folder}, "missing file"));
    EXPECT_EQ(readFile(directoryFile(folder)), "[Desktop Entry]\nIcon=" + picture("react") + "\n");
    ASSERT_TRUE(chooseIcon({folder}, "by name"));
    EXPECT_EQ(readFile(directoryFile(folder)), "[Desktop Entry]\nIcon=" + image + "\n");
    // An entry without any image takes the custom icon away.
    ASSERT_TRUE(chooseIcon({folder}, "nothing at all"));
    EXPECT_FALSE(exists(directoryFile(folder)));
}

TEST(FolderIconPictures, EveryFactoryEntryResolvesToAShippedSvg) {
    TempDir data;
    PXMenuManager store(std::make_shared<platform::MemorySettings>(), data.path());
    for (const auto& stored : PXDefaultData::defaultFolderIconMenu().array()) {
        PXMenuItem item;
        item.key = stored.get("key").string();
        item.icon = stored.get("icon").string();
        auto file = foldericon::imageFileFor(store, item);
        EXPECT_EQ(file, std::string(PX_SOURCE_DIR) + "/data/icons/" + item.key + ".svg");
    }
}

TEST_F(FolderIconActionTest, WithoutASessionBusTheDirectoryFileStillWorksPromptly) {
    const std::string folder = work.mkdir("f");
    const std::string file = work.write("f.txt");
    for (const std::optional<std::string>& address :
         {std::optional<std::string>(),
          std::optional<std::string>("unix:path=" + work.path() + "/no-bus")}) {
        ScopedEnv bus("DBUS_SESSION_BUS_ADDRESS", address);
        EXPECT_EQ(customicon::metadataStoreReachable(), address.has_value());
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE(chooseIcon({folder, file}, "apple"));
        EXPECT_EQ(readFile(directoryFile(folder)),
                  "[Desktop Entry]\nIcon=" + picture("apple") + "\n");
        ASSERT_TRUE(chooseIcon({folder, file}, "Recover Icon"));
        EXPECT_FALSE(exists(directoryFile(folder)));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

TEST_F(FolderIconActionTest, TheMetadataAttributeIsSetAndRemovedWhereAStoreRuns) {
    const std::string file = work.write("doc.txt", "x");
    if (!metadataStoreWorks(file)) GTEST_SKIP() << "no metadata store on this system";
    auto icon = PXMenuItem::create("wepay");
    icon->icon = "wepay";
    select({file}, work.path());
    commands::setFolderIcon(sync.cx(), *icon);
    EXPECT_EQ(gio::metadataString(file, customicon::kAttribute), "file://" + picture("wepay"));
    EXPECT_FALSE(exists(directoryFile(work.path())));
    commands::setFolderIcon(sync.cx(), *PXMenuItem::create("Recover Icon"));
    EXPECT_FALSE(gio::metadataString(file, customicon::kAttribute));
}

} // namespace
