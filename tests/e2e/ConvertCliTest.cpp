// pxmenu run on the "Convert to" targets with scripted answers.
#include "CliFixture.h"
#include "config/Localization.h"
#include "media/ImageFile.h"

#include <filesystem>

using namespace px::test;

namespace {

class ConvertCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "right", "Convert to", "disabled", "false"}).exitStatus,
                  0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }
    // An orange 40 x 30 image in the format the name's extension says.
    std::string image(const std::string& name) {
        px::media::ensureVipsStarted();
        const std::string path = work / name;
        vips::VImage::black(40, 30, vips::VImage::option()->set("bands", 3))
            .linear({1, 1, 1}, {255, 128, 0})
            .cast(VIPS_FORMAT_UCHAR)
            .write_to_file(path.c_str());
        return path;
    }
    std::int64_t targetTag(const std::vector<std::string>& paths, const std::string& target) {
        std::vector<std::string> args{"--target", work.path(), "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        const nlohmann::json menu = menuJson(args);
        const auto* convert = entry(menu, "Convert to");
        if (!convert) return -1;
        const auto* child = entry(convert->at("children"), target);
        return child ? child->at("tag").get<std::int64_t>() : -1;
    }
    ProcessResult run(const std::vector<std::string>& paths, const std::string& target,
                      const std::string& script) {
        const std::string scriptFile = answers.write("script.txt", script);
        std::vector<std::string> args{"run",
                                      "--tag",
                                      std::to_string(targetTag(paths, target)),
                                      "--target",
                                      work.path(),
                                      "--ui",
                                      "script:" + scriptFile,
                                      "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return pxmenu(args);
    }
    static std::string identify(const std::string& path) {
        return runProcess({"identify", "-format", "%m %wx%h", path}).out;
    }

    TempDir answers;
    ScopedEnv locale{"LC_ALL", "C.UTF-8"};
    ScopedEnv language{"LANGUAGE", std::nullopt};
};

TEST_F(ConvertCliTest, TheSubmenuLeavesOutTheSourcesOwnFormat) {
    const std::string png = image("a.png"), jpg = image("b.jpg");
    EXPECT_EQ(targetTag({png}, "PNG"), -1);
    EXPECT_GT(targetTag({png}, "JPEG"), 0);
    EXPECT_GT(targetTag({jpg}, "JPEG"), 0);
}

TEST_F(ConvertCliTest, ConvertsEachSelectedImageBesideItWithoutPrompts) {
    const std::string a = image("a.jpg"), b = image("b b.webp");
    ProcessResult result = run({a, b}, "TIFF", "");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(identify(work / "a.tiff"), "TIFF 40x30");
    EXPECT_EQ(identify(work / "b b.tiff"), "TIFF 40x30");
    for (const auto& line : transcript(result.out))
        EXPECT_FALSE(line.contains("prompt")) << line;
}

TEST_F(ConvertCliTest, AFailedWriteAlertsAndTheRestGoesOn) {
    const std::string a = image("a.png"), b = image("b.png");
    std::filesystem::create_directory(work / "a.jpeg");
    ProcessResult result = run({a, b}, "JPEG", "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("prompt"), "alert");
    EXPECT_EQ(lines[0].at("informative"), px::localized("Convert Fail"));
    EXPECT_EQ(identify(work / "b.jpeg"), "JPEG 40x30");
}

TEST_F(ConvertCliTest, ANonSquareIconSourceIsRefusedWithItsSize) {
    const std::string a = image("wide.png");
    ProcessResult result = run({a}, "Android AppIconset", "button 1000\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 1u) << result.out;
    EXPECT_EQ(lines[0].at("informative"),
              px::localizedFormat("Convert Icns image invalid", 40, 30));
}

} // namespace
