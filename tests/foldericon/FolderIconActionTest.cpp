#include "FolderIconFixture.h"
#include "actions/FolderIconImage.h"
#include "actions/GioFileInfo.h"
#include "actions/IconThemeFiles.h"
#include "actions/PixbufImage.h"
#include "config/IconTheme.h"

#include <chrono>
#include <filesystem>
#include <set>

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

TEST_F(FolderIconActionTest, SetThenRecoverKeepsTheFoldersOtherSettings) {
    const std::string folder = work.mkdir("project");
    const std::string before = "[Dolphin]\nViewMode=1\n\n[Desktop Entry]\nName=Project\n";
    work.write("project/.directory", before);
    EXPECT_EQ(find(iconMenu({folder}), "Recover Icon"), nullptr);

    ASSERT_TRUE(chooseIcon({folder}, "google"));
    EXPECT_EQ(readFile(directoryFile(folder)), "[Dolphin]\nViewMode=1\n\n[Desktop Entry]\nIcon=" +
                                                   picture("google") + "\nName=Project\n");
    EXPECT_TRUE(filehash::hasCustomIcon(folder));

    // Another icon replaces the first; the submenu now leads with "Recover".
    ASSERT_TRUE(chooseIcon({folder}, "java"));
    EXPECT_EQ(readFile(directoryFile(folder)), "[Dolphin]\nViewMode=1\n\n[Desktop Entry]\nIcon=" +
                                                   picture("java") + "\nName=Project\n");
    const auto children = iconMenu({folder});
    ASSERT_FALSE(children.empty());
    EXPECT_EQ(children.front().key, "Recover Icon");
    EXPECT_EQ(children.front().title, localized("Recover"));

    ASSERT_TRUE(chooseIcon({folder}, "Recover Icon"));
    EXPECT_EQ(readFile(directoryFile(folder)), before);
    EXPECT_FALSE(filehash::hasCustomIcon(folder));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(FolderIconActionTest, EveryItemOfTheSelectionIsChangedAndFilesGetNoDirectoryFile) {
    const std::string first = work.mkdir("a \"quoted\" $(reboot)");
    const std::string second = work.mkdir("b");
    const std::string file = work.write("notes.txt", "text");
    ASSERT_TRUE(chooseIcon({first, file, second}, "love"));
    EXPECT_EQ(readFile(directoryFile(first)), "[Desktop Entry]\nIcon=" + picture("love") + "\n");
    EXPECT_EQ(readFile(directoryFile(second)), "[Desktop Entry]\nIcon=" + picture("love") + "\n");
    EXPECT_FALSE(exists(directoryFile(work.path())));
    EXPECT_EQ(readFile(file), "text");

    ASSERT_TRUE(chooseIcon({first, file, second}, "Recover Icon"));
    EXPECT_FALSE(exists(directoryFile(first)));
    EXPECT_FALSE(exists(directoryFile(second)));
    EXPECT_TRUE(exists(file) && exists(first));
}

TEST_F(FolderIconActionTest, RecoverWhenNothingWasSetChangesNothing) {
    const std::string bare = work.mkdir("bare");
    const std::string kept = work.mkdir("kept");
    work.write("kept/.directory", "[Settings]\nHiddenFilesShown=true\n");
    auto recover = PXMenuItem::create("Recover Icon");
    select({bare, kept}, work.path());
    sync.setFolderIcon(recover);
    EXPECT_FALSE(exists(directoryFile(bare)));
    EXPECT_EQ(readFile(directoryFile(kept)), "[Settings]\nHiddenFilesShown=true\n");
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(FolderIconActionTest, AVanishedItemIsSkippedAndTheOthersAreChanged) {
    const std::string gone = work.mkdir("gone");
    const std::string stays = work.mkdir("stays");
    select({gone, stays}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    const MenuEntry* parent = find(menu, "Folder Icon");
    ASSERT_NE(parent, nullptr);
    const MenuEntry* twitter = find(parent->children, "twitter");
    ASSERT_NE(twitter, nullptr);
    std::filesystem::remove(gone);
    sync.onMenuItemAction(twitter->tag);
    queue::runUntilIdle();
    EXPECT_FALSE(exists(gone));
    EXPECT_EQ(readFile(directoryFile(stays)), "[Desktop Entry]\nIcon=" + picture("twitter") + "\n");
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(FolderIconActionTest, AnUnreadableDirectoryFileIsLeftAsItIs) {
    const std::string folder = work.mkdir("odd");
    work.write("odd/.directory/inside", "kept");
    ASSERT_TRUE(chooseIcon({folder}, "qq"));
    EXPECT_EQ(readFile(folder + "/.directory/inside"), "kept");
}

TEST_F(FolderIconActionTest, UserImagesComeFromTheFolderIconFolder) {
    const std::string image = PXMenuManager::folderIconFolder() + "/mine.png";
    if (!pixbuf::renderSquarePNG(picture("star"), image, 32)) GTEST_SKIP() << "no SVG loader";
    auto entry = [](const std::string& key, const std::string& iconPath, const std::string& icon) {
        auto dict = plist::Value::makeMutableDictionary();
        dict.set("key", plist::Value(key));
        dict.set("iconPath", plist::Value(iconPath));
        dict.set("icon", plist::Value(icon));
        PXMenuManager::addMenuKey(menukey::kFolderIcon, dict.frozen(), false);
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

TEST(FolderIconPictures, EveryFactoryEntryResolvesToAWellFormedSvg) {
    test::TempDir scratch;
    const std::string probe = scratch.write(
        "probe.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" "
                     "width=\"8\" height=\"8\"><rect width=\"8\" height=\"8\"/></svg>");
    const bool svgLoads = pixbuf::renderSquarePNG(probe, scratch / "probe.png", 8);
    const plist::Array factory = PXDefaultData::defaultFolderIconMenu().array();
    ASSERT_EQ(factory.size(), 20u);
    std::set<std::string> files;
    for (const auto& stored : factory) {
        PXMenuItem item;
        item.key = stored.get("key").string();
        item.icon = stored.get("icon").string();
        auto file = foldericon::imageFileFor(item);
        ASSERT_TRUE(file) << item.key;
        EXPECT_EQ(*file, std::string(PX_SOURCE_DIR) + "/data/icons/" + item.key + ".svg");
        const std::string text = readFile(*file);
        EXPECT_TRUE(text.starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\"")) << *file;
        EXPECT_TRUE(text.ends_with("</svg>\n")) << *file;
        if (svgLoads) {
            EXPECT_TRUE(pixbuf::renderSquarePNG(*file, scratch / (item.key + ".png"), 64)) << *file;
        }
        files.insert(*file);
    }
    EXPECT_EQ(files.size(), 20u);
    if (!svgLoads) GTEST_SKIP() << "gdk-pixbuf has no SVG loader here; only the text was checked";
}

TEST(FolderIconPictures, PicturesAreAbsolutePathsEvenFromARelativeDataFolder) {
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(PX_SOURCE_DIR);
    std::optional<std::string> file;
    {
        ScopedEnv dataDir("PXMENU_DATADIR", "data");
        PXMenuItem item;
        item.key = "react";
        item.icon = "react";
        file = foldericon::imageFileFor(item);
    }
    std::filesystem::current_path(previous);
    EXPECT_EQ(file, std::string(PX_SOURCE_DIR) + "/data/icons/react.svg");
}

TEST(FolderIconPictures, WithoutItsOwnPictureAnEntryTakesTheImageOfItsPath) {
    TempDir dir;
    PXMenuItem item;
    item.key = "mine";
    item.iconPath = dir / "missing.png";
    item.path = dir.path();
    const auto themeFolder = icontheme::findIconFile({"folder"}, 256);
    EXPECT_EQ(foldericon::imageFileFor(item), themeFolder);
    EXPECT_TRUE(!themeFolder || themeFolder->starts_with('/'));
    item.path.clear();
    EXPECT_EQ(foldericon::imageFileFor(item), std::nullopt);
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
    sync.setFolderIcon(icon);
    EXPECT_EQ(gio::metadataString(file, customicon::kAttribute), "file://" + picture("wepay"));
    EXPECT_FALSE(exists(directoryFile(work.path())));
    sync.setFolderIcon(PXMenuItem::create("Recover Icon"));
    EXPECT_FALSE(gio::metadataString(file, customicon::kAttribute));
}

} // namespace
