// "Copy to" and "Cut Paste" chosen through `pxmenu run` with scripted answers.
#include "CliFixture.h"

#include <unistd.h>

using namespace px::test;

namespace {

class CopyMoveCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus(); }

    std::string src = work.mkdir("src"), dest = work.mkdir("dest");
};

TEST_F(CopyMoveCliTest, CopyToAChosenFolderWithCollisionsAnsweredEachWay) {
    const Strings items{work.write("src/a.txt", "new a"), work.write("src/b.txt", "new b"),
                        work.write("src/c.txt", "new c")};
    for (const char* name : {"a.txt", "b.txt", "c.txt"})
        work.write(std::string("dest/") + name, "old");
    auto result = runEntry({"Copy to", "Select Folder"}, request(0, src, items),
                           "open " + dest + "\nbutton 1000\nbutton 1002\nbutton 1001\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const auto lines = transcript(result.out);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().at("button"), "Copy");
    EXPECT_EQ(withKey(result.out, "prompt").size(), 4u);
    EXPECT_EQ(withKey(result.out, "success"), std::vector{nlohmann::json({{"success", "Done"}})});
    EXPECT_EQ(listing(dest), (Strings{"a-1.txt", "a.txt", "b.txt", "c.txt"}));
    EXPECT_EQ(readFile(dest + "/a-1.txt"), "new a");
    EXPECT_EQ(readFile(dest + "/b.txt"), "new b");
    EXPECT_EQ(readFile(dest + "/c.txt"), "old");
    EXPECT_EQ(listing(src), (Strings{"a.txt", "b.txt", "c.txt"}));
}

TEST_F(CopyMoveCliTest, CutAndPasteAcrossRunsWithAnItemDeletedMeanwhile) {
    const std::string kept = work.write("src/kept", "k");
    const std::string gone = work.write("src/gone \"$(reboot)\"", "g");
    auto cut = runEntry({"Cut Paste"}, request(0, src, {kept, gone}));
    ASSERT_EQ(cut.exitStatus, 0) << cut.err;
    EXPECT_EQ(tagAt({"Cut Paste"}, request(1, src)), -1); // not back into the same folder
    ::unlink(gone.c_str());

    auto paste = runEntry({"Cut Paste"}, request(1, dest), "button 1000\n");
    ASSERT_EQ(paste.exitStatus, 0) << paste.err;
    EXPECT_EQ(listing(dest), Strings{"kept"});
    EXPECT_TRUE(listing(src).empty());
    const auto alerts = withKey(paste.out, "informative");
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_NE(alerts[0].at("informative").get<std::string>().find("No such file or directory"),
              std::string::npos);
    EXPECT_EQ(tagAt({"Cut Paste"}, request(1, dest)), -1); // the list is empty again
}

} // namespace
