#include "IconTestSupport.h"
#include "digest/ActionFixture.h"
#include "e2e/CliFixture.h"

#include <algorithm>

namespace px::test {
namespace {

class ExtractIcon : public ActionFixture {};

TEST_F(ExtractIcon, AnImageFileGivesItsOwnPictureBesideIt) {
    std::string photo = work / "photo.png";
    writePng(gradientImage(300, 300), photo);
    select({photo});
    sync->extractIcon();
    EXPECT_EQ(identifySize(work / "photo-1.png"), std::make_pair(1024, 1024));
    EXPECT_EQ(identifySize(photo), std::make_pair(300, 300)) << "the source is left alone";
}

TEST_F(ExtractIcon, AFolderGivesTheThemesFolderIconAndNumbersRepeats) {
    std::string app = work.mkdir("Clock.app");
    select({app});
    sync->extractIcon();
    sync->extractIcon();
    EXPECT_EQ(identifySize(work / "Clock.png"), std::make_pair(1024, 1024));
    EXPECT_EQ(identifySize(work / "Clock-1.png"), std::make_pair(1024, 1024));
    EXPECT_EQ(readFile(work / "Clock.png"), readFile(work / "Clock-1.png"));
}

TEST_F(ExtractIcon, EverySelectedItemIsSaved) {
    std::string odd = work.write("a \"b\" $(touch pwned).txt", "text");
    std::string folder = work.mkdir("docs");
    select({odd, folder, work / "vanished.txt"});
    sync->extractIcon();
    EXPECT_EQ(identifySize(work / "a \"b\" $(touch pwned).png"), std::make_pair(1024, 1024));
    EXPECT_EQ(identifySize(work / "docs.png"), std::make_pair(1024, 1024));
    EXPECT_FALSE(exists(work / "pwned"));
    EXPECT_FALSE(exists(work / "vanished.png"));
    EXPECT_TRUE(ui->transcript().empty());
}

class ExtractIconCli : public CliFixture {};

TEST_F(ExtractIconCli, TheMenuEntrySavesTheIcon) {
    ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "set", "right", "Extract Icon", "disabled", "false"}).exitStatus,
              0);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    std::string folder = work.mkdir("Music Player.app");
    auto menu = menuJson({"--target", work.path(), "--", folder});
    const auto* extract = entry(menu, "Extract Icon");
    ASSERT_TRUE(extract) << menu.dump();
    std::string script = work.write("answers.txt", "");
    auto result = pxmenu({"run", "--tag", std::to_string(extract->at("tag").get<int>()), "--target",
                          work.path(), "--ui", "script:" + script, "--", folder});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(identifySize(work / "Music Player.png"), std::make_pair(1024, 1024));
}

} // namespace
} // namespace px::test
