#include "CliFixture.h"

#include <random>

using namespace px::test;

namespace {

class DigestCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "right", "File Info", "disabled", "false"}).exitStatus,
                  0);
        // No review prompt after the third use: each case runs several commands.
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }
    // The tag of a top-level entry, or of its child with `childKey`.
    int tagOf(const nlohmann::json& menu, const std::string& key,
              const std::string& childKey = {}) {
        const auto* found = entry(menu, key);
        if (!found) return -1;
        if (childKey.empty()) return found->at("tag").get<int>();
        const auto* child = entry(found->at("children"), childKey);
        return child ? child->at("tag").get<int>() : -1;
    }
    ProcessResult run(int tag, const std::string& answers, std::vector<std::string> extra) {
        std::string script = work.write("answers.txt", answers);
        std::vector<std::string> args{"run",       "--tag", std::to_string(tag), "--target",
                                      work.path(), "--ui",  "script:" + script};
        args.insert(args.end(), extra.begin(), extra.end());
        return pxmenu(args);
    }
    static std::string tool(const std::string& program, const std::string& path) {
        auto result = runProcess({program, "--", path});
        return result.out.substr(0, result.out.find(' '));
    }

    ScopedEnv locale{"LC_ALL", "C.UTF-8"};
    ScopedEnv language{"LANGUAGE", std::nullopt};
};

TEST_F(DigestCliTest, FileInfoOffersFourDigestsAndCopiesTheChosenOne) {
    std::string bytes(300000, '\0');
    std::mt19937 engine(5);
    for (char& byte : bytes)
        byte = static_cast<char>(engine());
    std::string file = work.write("data $(reboot).bin", bytes);
    auto menu = menuJson({"--target", work.path(), "--", file});
    const auto* info = entry(menu, "File Info");
    ASSERT_TRUE(info);
    auto children = keys(info->at("children"));
    ASSERT_GE(children.size(), 4u);
    EXPECT_EQ(std::vector<std::string>(children.begin(), children.begin() + 4),
              (std::vector<std::string>{"MD5", "SHA1", "SHA256", "SHA512"}));

    const std::pair<const char*, const char*> choices[] = {
        {"MD5", "md5sum"}, {"SHA1", "sha1sum"}, {"SHA256", "sha256sum"}, {"SHA512", "sha512sum"}};
    for (const auto& [key, program] : choices) {
        auto result = run(tagOf(menu, "File Info", key), "button 1000\n", {"--", file});
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        auto lines = transcript(result.out);
        ASSERT_EQ(lines.size(), 2u) << result.out;
        EXPECT_EQ(lines[0]["prompt"], "alert");
        EXPECT_EQ(lines[0]["message"], key);
        EXPECT_EQ(lines[0]["informative"], tool(program, file));
        EXPECT_EQ(lines[0]["buttons"], nlohmann::json({"Copy", "Cancel"}));
        EXPECT_EQ(lines[1], nlohmann::json({{"clipboard", tool(program, file)}}));
    }
}

TEST_F(DigestCliTest, CancelCopiesNothingAndAVanishedFileShowsAnEmptyDigest) {
    std::string file = work.write("empty.txt");
    auto menu = menuJson({"--target", work.path(), "--", file});
    int md5 = tagOf(menu, "File Info", "MD5");
    auto cancelled = run(md5, "button 1001\n", {"--", file});
    ASSERT_EQ(cancelled.exitStatus, 0) << cancelled.err;
    auto lines = transcript(cancelled.out);
    ASSERT_EQ(lines.size(), 1u) << cancelled.out;
    EXPECT_EQ(lines[0]["informative"], "d41d8cd98f00b204e9800998ecf8427e");

    auto vanished = run(md5, "button 1000\n", {"--", work / "gone.txt"});
    ASSERT_EQ(vanished.exitStatus, 0) << vanished.err;
    lines = transcript(vanished.out);
    ASSERT_EQ(lines.size(), 1u) << vanished.out;
    EXPECT_EQ(lines[0]["message"], "MD5");
    EXPECT_EQ(lines[0]["informative"], "");
}

TEST_F(DigestCliTest, ColorPickerShowsBothTextsAndCopiesTheChosenOne) {
    auto menu = menuJson({"--kind", "1", "--target", work.path()});
    int tag = tagOf(menu, "Color Picker");
    ASSERT_GT(tag, 0);
    auto result = run(tag, "color 233 87 71\nbutton 1001\n", {"--kind", "1"});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 3u) << result.out;
    EXPECT_EQ(lines[0], nlohmann::json({{"prompt", "color"}}));
    EXPECT_EQ(lines[1]["message"], "");
    EXPECT_EQ(lines[1]["informative"], "HEX\uFF1AE95747\n\nRGB\uFF1A233,87,71");
    EXPECT_EQ(lines[1]["buttons"], nlohmann::json({"Copy HEX", "Copy RGB"}));
    EXPECT_EQ(lines[2], nlohmann::json({{"clipboard", "233,87,71"}}));

    ASSERT_EQ(pxmenu({"config", "set", "pref", "pref check6", "true"}).exitStatus, 0);
    result = run(tag, "color 255 255 255\nbutton 1000\n", {"--kind", "1"});
    lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 3u) << result.out;
    EXPECT_EQ(lines[2], nlohmann::json({{"clipboard", "#FFFFFF"}}));

    result = run(tag, "cancel\n", {"--kind", "1"});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(transcript(result.out).size(), 1u) << result.out;
}

} // namespace
