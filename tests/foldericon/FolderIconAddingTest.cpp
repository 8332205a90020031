#include "actions/FolderIconAdding.h"

#include "FolderIconFixture.h"
#include "config/IconTheme.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

using namespace px;
using namespace px::test;

namespace {

class FolderIconAddingTest : public FolderIconFixture {
  protected:
    std::vector<std::string> iconKeys() {
        std::vector<std::string> keys;
        for (const auto& entry : suite->arrayForKey(menukey::kFolderIcon).array())
            keys.push_back(entry.get("key").string());
        return keys;
    }
};

std::pair<int, int> sizeOf(const std::string& image) {
    int width = 0, height = 0;
    gdk_pixbuf_get_file_info(image.c_str(), &width, &height);
    return {width, height};
}

// A picture added from the settings becomes the last icon of the submenu and is what a folder
// gets when it is chosen.
TEST_F(FolderIconAddingTest, AnAddedPictureIsOfferedAndGivenToTheFolder) {
    const std::string source = *dataDirectory() + "/icons/star.svg";
    auto added = foldericon::addFolderIcon(*store, source);
    if (added.isError()) GTEST_SKIP() << "no SVG loader: " << added.error().message;
    const std::string key = added.value().get("key").string();
    const std::string image = added.value().get("iconPath").string();
    EXPECT_EQ(image, store->folderIconFolder() + "/" + key + ".png");
    EXPECT_EQ(sizeOf(image),
              std::make_pair(foldericon::kAddedIconSize, foldericon::kAddedIconSize));
    EXPECT_EQ(iconKeys().back(), key);

    const std::string folder = work.mkdir("f");
    const auto children = iconMenu({folder});
    const MenuEntry* offered = find(children, key);
    ASSERT_NE(offered, nullptr);
    EXPECT_EQ(offered->title, "star");
    ASSERT_TRUE(chooseIcon({folder}, key));
    EXPECT_EQ(readFile(folder + "/.directory"), "[Desktop Entry]\nIcon=" + image + "\n");
}

TEST_F(FolderIconAddingTest, WhatIsNotAnImageAddsNothing) {
    const auto before = iconKeys();
    for (const std::string& source : {work.write("notes.png", "not a picture"),
                                      work.path() + "/missing.png", work.mkdir("folder.png")}) {
        SCOPED_TRACE(source);
        EXPECT_TRUE(foldericon::addFolderIcon(*store, source).isError());
        EXPECT_EQ(iconKeys(), before);
        EXPECT_TRUE(listing(store->folderIconFolder()).empty());
    }
}

} // namespace
