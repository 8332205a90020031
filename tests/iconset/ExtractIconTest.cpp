#include "IconTestSupport.h"
#include "digest/ActionFixture.h"

namespace px::test {
namespace {

class ExtractIcon : public ActionFixture {};

// An image gives its own picture, other files and folders the theme's icon, each saved at 1024
// pixels beside the item under a free name; vanished items are passed over without a word.
TEST_F(ExtractIcon, EverySelectedItemIsSavedBesideItUnderAFreeName) {
    std::string photo = work / "photo.png";
    writePng(gradientImage(300, 300), photo);
    std::string odd = work.write("a \"b\" $(touch pwned).txt", "text");
    std::string app = work.mkdir("Clock.app");
    select({photo, odd, app, work / "vanished.txt"});
    commands::extractIcon(sync.cx());
    commands::extractIcon(sync.cx());
    for (const char* name :
         {"photo-1.png", "a \"b\" $(touch pwned).png", "Clock.png", "Clock-1.png", "photo-2.png"}) {
        EXPECT_EQ(identifySize(work / name), std::make_pair(1024, 1024)) << name;
    }
    EXPECT_EQ(readFile(work / "Clock.png"), readFile(work / "Clock-1.png"));
    EXPECT_EQ(identifySize(photo), std::make_pair(300, 300)) << "the source is left alone";
    EXPECT_FALSE(exists(work / "pwned"));
    EXPECT_FALSE(exists(work / "vanished.png"));
    EXPECT_TRUE(ui->transcript().empty());
}

} // namespace
} // namespace px::test
