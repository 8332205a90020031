#include "media/AppIconCatalogue.h"

#include "IconTestSupport.h"

#include <gtest/gtest.h>

namespace px::media {
namespace {

TEST(AppIconCatalogue, NamesWithoutExactlyOneUnderscoreAreNotImages) {
    for (const char* name : {".hidden_16x16.png", "plain.png", "two_parts_16x16.png",
                             "icon_16x16.txt", "icon_16x16", "_"})
        EXPECT_FALSE(catalogueImage(name, AppIconSet::IOS)) << name;
    EXPECT_TRUE(catalogueImage("_16x16.png", AppIconSet::IOS));
    EXPECT_TRUE(catalogueImage("Icon_16x16.PNG", AppIconSet::MacOS));
}

TEST(AppIconCatalogue, AnUnwritableFolderIsReported) {
    test::TempDir dir;
    EXPECT_FALSE(createConfigJsonToPath(dir / "missing", AppIconSet::MacOS));
}

} // namespace
} // namespace px::media
