// Damaged settings files and damaged lists, met by `pxmenu menu`, `config list` and `setup`.
#include "CliFixture.h"

#include <sys/stat.h>

using namespace px::test;

namespace {

class DamagedSettingsTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        factoryText = readFile(suite());
        factoryMenu = backgroundMenu();
    }
    std::string suite() const { return xdg.configHome() + "/pxmenu/group.plist"; }
    Strings backgroundMenu() { return keys(menuJson(request(1, work.path()))); }
    // The settings file with `list` set to the value written as XML.
    std::string withList(const std::string& list, const std::string& valueXml) const {
        std::string text = factoryText;
        const std::string key = "<key>" + list + "</key>";
        const std::size_t at = text.find(key);
        const std::size_t end = text.find("</array>", at);
        return text.replace(at + key.size(), end + 8 - at - key.size(), "\n\t" + valueXml);
    }
    static std::size_t lines(const std::string& text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }
    std::size_t listCount(const std::string& list) {
        auto listed = pxmenu({"config", "list", list});
        EXPECT_EQ(listed.exitStatus, 0) << listed.err;
        return lines(listed.out);
    }
    std::string factoryText;
    Strings factoryMenu;
};

std::string flipped(std::string text) {
    for (std::size_t i = text.find("<dict>"); i < text.size(); i += 211)
        text[i] = static_cast<char>(text[i] ^ 0x5a);
    return text;
}

std::string entityBomb() {
    std::string doctype = "<?xml version=\"1.0\"?>\n<!DOCTYPE plist [\n<!ENTITY a \"" +
                          std::string(64, 'a') + "\">\n";
    for (char e = 'b'; e <= 'j'; ++e)
        doctype += std::string("<!ENTITY ") + e + " \"" + [&] {
            std::string refs;
            for (int i = 0; i < 16; ++i)
                refs += std::string("&") + static_cast<char>(e - 1) + ";";
            return refs;
        }() + "\">\n";
    return doctype + "]>\n<plist version=\"1.0\"><dict><key>array right menu</key><array>"
                     "<dict><key>key</key><string>&j;</string></dict></array></dict></plist>\n";
}

TEST_F(DamagedSettingsTest, ADamagedFileGivesOneMessageTheFactoryMenusAtOnceAndIsKeptAside) {
    struct Case {
        const char* what;
        std::string bytes; // written in place of the file; empty: a folder in its place
    };
    const std::vector<Case> cases{
        {"truncated XML", factoryText.substr(0, factoryText.size() / 3)},
        {"flipped bytes", flipped(factoryText)},
        {"an array at the root", "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><array>"
                                 "<string>x</string></array></plist>\n"},
        {"JSON", R"({"array right menu": [{"key": "Copy to"}]})"},
        {"OpenStep text", R"({ "array right menu" = ( { key = "Copy to"; } ); })"},
        {"an entity bomb", entityBomb()},
        {"a folder", ""},
    };
    const std::string earlier = "kept from an earlier damage";
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        std::filesystem::remove_all(suite());
        std::filesystem::remove_all(suite() + ".broken-1");
        std::ofstream(suite() + ".broken") << earlier;
        if (test.bytes.empty())
            std::filesystem::create_directory(suite());
        else
            std::ofstream(suite(), std::ios::binary) << test.bytes;

        auto first = pxmenu({"menu", "--json", "--kind", "1", "--target", work.path()});
        ASSERT_EQ(first.exitStatus, 0);
        EXPECT_EQ(keys(nlohmann::json::parse(first.out)), factoryMenu);
        EXPECT_EQ(lines(first.err), 1u) << first.err;
        EXPECT_NE(first.err.find("damaged"), std::string::npos) << first.err;
        EXPECT_NE(first.err.find(suite() + ".broken-1"), std::string::npos) << first.err;
        EXPECT_EQ(readFile(suite() + ".broken"), earlier) << "never overwritten";
        if (test.bytes.empty())
            EXPECT_TRUE(std::filesystem::is_directory(suite() + ".broken-1"));
        else
            EXPECT_EQ(readFile(suite() + ".broken-1"), test.bytes);

        auto again = pxmenu({"menu", "--kind", "1", "--target", work.path()});
        EXPECT_EQ(again.err, "") << "repaired once, for good";
        EXPECT_EQ(backgroundMenu(), factoryMenu);
        EXPECT_EQ(listCount("right"), 28u);
    }
}

TEST_F(DamagedSettingsTest, AListOfTheWrongTypeIsReplacedByTheFactoryList) {
    struct Case {
        const char* what;
        std::string list, valueXml, shortName;
        bool throughSetup;
    };
    const std::size_t newFiles = listCount("new-file"), apps = listCount("common-app");
    const std::vector<Case> cases{
        {"main list as a dictionary", "array right menu",
         "<dict><key>key</key><string>Copy to</string></dict>", "right", false},
        {"main list of texts", "array right menu", "<array><string>Copy to</string></array>",
         "right", false},
        {"main list repaired by setup", "array right menu", "<dict/>", "right", true},
        {"new-file entries without a key text", "array new file",
         "<array><dict><key>key</key><integer>3</integer></dict></array>", "new-file", false},
        {"common apps as a number", "array common app", "<integer>7</integer>", "common-app", true},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        std::filesystem::remove_all(suite() + ".broken");
        const std::string damaged = withList(test.list, test.valueXml);
        std::ofstream(suite(), std::ios::binary | std::ios::trunc) << damaged;

        auto first = test.throughSetup ? pxmenu({"setup"})
                                       : pxmenu({"menu", "--kind", "1", "--target", work.path()});
        ASSERT_EQ(first.exitStatus, 0);
        EXPECT_EQ(lines(first.err), 1u) << first.err;
        EXPECT_NE(first.err.find(test.list), std::string::npos) << first.err;
        EXPECT_EQ(readFile(suite() + ".broken"), damaged);
        EXPECT_EQ(backgroundMenu(), factoryMenu);
        const std::size_t expected = test.shortName == "right"      ? 28u
                                     : test.shortName == "new-file" ? newFiles
                                                                    : apps;
        EXPECT_EQ(listCount(test.shortName), expected);
        EXPECT_EQ(pxmenu({"menu", "--kind", "1", "--target", work.path()}).err, "");
    }
}

TEST_F(DamagedSettingsTest, SettingsThatMerelyLackTheListsAreNotDamaged) {
    std::ofstream(suite(), std::ios::trunc)
        << "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>pref check1</key>"
           "<true/></dict></plist>\n";
    auto menu = pxmenu({"menu", "--kind", "1", "--target", work.path()});
    EXPECT_EQ(menu.exitStatus, 0);
    EXPECT_EQ(menu.err, "");
    EXPECT_EQ(menu.out, "");
    EXPECT_FALSE(exists(suite() + ".broken"));
    ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
    EXPECT_EQ(backgroundMenu(), factoryMenu);
}

} // namespace
