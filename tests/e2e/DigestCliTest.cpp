// "File Info" digests and the colour picker through `pxmenu run`, compared with the system's tools.
#include "CliFixture.h"

#include <random>

using namespace px::test;

namespace {

class DigestCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"File Info"}); }
    static std::string tool(const std::string& program, const std::string& path) {
        auto result = runProcess({program, "--", path});
        return result.out.substr(0, result.out.find(' '));
    }
};

TEST_F(DigestCliTest, FileInfoShowsEachDigestAndCopiesIt) {
    std::string bytes(300000, '\0');
    std::mt19937 engine(5);
    for (char& byte : bytes)
        byte = static_cast<char>(engine());
    const std::string file = work.write("data $(reboot).bin", bytes);
    const Strings args = request(0, work.path(), {file});
    const nlohmann::json menu = menuJson(args);
    const auto* info = entry(menu, "File Info");
    ASSERT_TRUE(info);
    const Strings children = keys(info->at("children"));
    ASSERT_GE(children.size(), 4u);
    EXPECT_EQ(Strings(children.begin(), children.begin() + 4),
              (Strings{"MD5", "SHA1", "SHA256", "SHA512"}));

    const std::pair<const char*, const char*> choices[] = {
        {"MD5", "md5sum"}, {"SHA1", "sha1sum"}, {"SHA256", "sha256sum"}, {"SHA512", "sha512sum"}};
    for (const auto& [key, program] : choices) {
        SCOPED_TRACE(key);
        auto result = runEntry({"File Info", key}, args, "button 1000\n");
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        auto lines = transcript(result.out);
        ASSERT_EQ(lines.size(), 2u) << result.out;
        EXPECT_EQ(lines[0]["message"], key);
        EXPECT_EQ(lines[0]["informative"], tool(program, file));
        EXPECT_EQ(lines[0]["buttons"], nlohmann::json({"Copy", "Cancel"}));
        EXPECT_EQ(lines[1], nlohmann::json({{"clipboard", tool(program, file)}}));
    }
}

TEST_F(DigestCliTest, ColorPickerShowsBothTextsAndCopiesTheChosenOne) {
    const Strings args = request(1, work.path());
    auto result = runEntry({"Color Picker"}, args, "color 233 87 71\nbutton 1001\n");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    auto lines = transcript(result.out);
    ASSERT_EQ(lines.size(), 3u) << result.out;
    EXPECT_EQ(lines[0], nlohmann::json({{"prompt", "color"}}));
    EXPECT_EQ(lines[1]["informative"], "HEX\uFF1AE95747\n\nRGB\uFF1A233,87,71");
    EXPECT_EQ(lines[1]["buttons"], nlohmann::json({"Copy HEX", "Copy RGB"}));
    EXPECT_EQ(lines[2], nlohmann::json({{"clipboard", "233,87,71"}}));

    ASSERT_EQ(pxmenu({"config", "set", "pref", "pref check6", "true"}).exitStatus, 0);
    result = runEntry({"Color Picker"}, args, "color 255 255 255\nbutton 1000\n");
    EXPECT_EQ(withKey(result.out, "clipboard"),
              std::vector{nlohmann::json({{"clipboard", "#FFFFFF"}})});
    result = runEntry({"Color Picker"}, args, "cancel\n");
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(transcript(result.out).size(), 1u) << result.out;
}

} // namespace
