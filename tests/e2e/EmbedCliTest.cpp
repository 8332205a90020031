// Embed and unembed chosen through `pxmenu run` with scripted answers, on real folders.
#include "CliFixture.h"

using namespace px::test;

namespace {

class EmbedCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Embed in Folder", "Unembed Folder"}); }
};

TEST_F(EmbedCliTest, SeveralItemsAreSortedByExtensionAfterTheDialog) {
    std::string a = work.write("a.JPG", "1"), b = work.write("b.jpg", "2");
    std::string c = work.write("c", "3"), odd = work.write("d \"$(touch pwned)\".Txt", "4");
    auto result = runEntry({"Embed in Folder"}, request(0, work.path(), {a, b, c, odd}),
                           "embed 1 Holiday 2024\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("prompt"), "embed");
    EXPECT_EQ(lines[0].at("name"), "Untitled");
    EXPECT_EQ(lines[0].at("modes"),
              nlohmann::json(Strings{"Not classified", "Classify by file extension"}));
    EXPECT_EQ(readFile(work / "Holiday 2024/jpg/a.JPG"), "1");
    EXPECT_EQ(readFile(work / "Holiday 2024/jpg/b.jpg"), "2");
    EXPECT_EQ(readFile(work / "Holiday 2024/c"), "3");
    EXPECT_EQ(readFile(work / "Holiday 2024/txt/d \"$(touch pwned)\".Txt"), "4");
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(EmbedCliTest, UnembedKeepsClashingNamesAndDropsHiddenEntries) {
    work.write("x.txt", "outer");
    std::string box = work.mkdir("box");
    work.write("box/x.txt", "inner");
    work.write("box/.hidden", "x.txt\n");
    auto result = runEntry({"Unembed Folder"}, request(0, work.path(), {box}));
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(readFile(work / "x.txt"), "outer");
    EXPECT_EQ(readFile(work / "x-1.txt"), "inner");
    EXPECT_EQ(listing(work.path()), (Strings{"x-1.txt", "x.txt"}));
}

} // namespace
