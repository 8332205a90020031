// pxmenu run on a "Convert to" target.
#include "CliFixture.h"

using namespace px::test;

namespace {

class ConvertCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Convert to"}); }
};

TEST_F(ConvertCliTest, ConvertsEachSelectedImageBesideItWithoutPrompts) {
    const Strings images{work / "a.jpg", work / "b b.webp"};
    for (const auto& image : images)
        ASSERT_EQ(runProcess({"convert", "-size", "40x30", "xc:#FF8000", image}).exitStatus, 0);
    ProcessResult result = runEntry({"Convert to", "TIFF"}, request(0, work.path(), images));
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    for (const char* converted : {"a.tiff", "b b.tiff"})
        EXPECT_EQ(runProcess({"identify", "-format", "%m %wx%h", work / converted}).out,
                  "TIFF 40x30");
    EXPECT_TRUE(withKey(result.out, "prompt").empty()) << result.out;
}

} // namespace
