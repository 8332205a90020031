#include "config/ConfigExchange.h"

#include "ConfigFixture.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "plist/PlistCodec.h"

using namespace px;
using px::plist::Value;

namespace {

class ConfigExchangeTest : public test::ConfigFixture {
  protected:
    void SetUp() override {
        ConfigFixture::SetUp();
        PXDefaultData(*store).setup();
        suite->setBool("pref check0", true);
        suite->setString("second terminal", "xterm");
        suite->setInteger("use count", 7);
    }
    std::string writePlist(const std::string& name, const Value& root) {
        std::string path = folder / name;
        EXPECT_FALSE(plist::writeFileAtomically(path, root).isError());
        return path;
    }
    Value configuration() { return exchange::currentConfiguration(*suite); }
};

TEST_F(ConfigExchangeTest, AnExportedConfigurationImportsBackOverLaterChanges) {
    const std::string path = folder / "saved.plist";
    ASSERT_FALSE(exchange::exportConfiguration(*suite, path).isError());
    const Value saved = configuration();
    EXPECT_FALSE(saved.get("use count")) << "run-time counters are not configuration";

    store->changePositionMenuKey(menukey::kRightMenu, 0, 5);
    store->addMenuKey(menukey::kCommonPath, dict({{"path", Value("/srv")}}), false);
    suite->setBool("pref check0", false);
    ASSERT_FALSE(exchange::importConfiguration(*suite, path).isError());

    EXPECT_EQ(configuration(), saved);
    EXPECT_FALSE(suite->objectForKey(menukey::kCommonPath)) << "a list the file lacks goes";
    EXPECT_EQ(suite->integerForKey("use count"), 7);
}

TEST_F(ConfigExchangeTest, DamagedOrWrongShapedFilesAreRefusedAndChangeNothing) {
    const Value before = configuration();
    auto list = [](Value entry) { return Value::makeArray({entry}); };
    struct Case {
        const char* name;
        std::string path;
        const char* because;
    };
    const Case cases[] = {
        {"not a property list", folder.write("junk.plist", "<plist><dict><key>"), "parse"},
        {"missing file", folder / "absent.plist", "No such file"},
        {"an array", writePlist("array.plist", Value::makeArray()), "does not hold a dictionary"},
        {"no lists", writePlist("prefs.plist", dict({{"pref check0", Value(false)}})),
         "none of the menu lists"},
        {"list not an array",
         writePlist("string.plist", dict({{menukey::kRightMenu, Value("Copy to")}})),
         "is not a list"},
        {"entry not a dictionary",
         writePlist("entry.plist", dict({{menukey::kNewFile, list(Value("txt"))}})),
         "entry 1 is not a dictionary"},
        {"text field of another type",
         writePlist("key.plist", dict({{menukey::kCommonApp, list(dict({{"key", Value(3)}}))}})),
         "\"key\" is not a text"},
        {"flag of another type",
         writePlist("flag.plist",
                    dict({{menukey::kFolderIcon,
                           list(dict({{"key", Value("a")}, {"disabled", Value("x")}}))}})),
         "\"disabled\" is not a yes/no"},
        {"preference of another type",
         writePlist("pref.plist", dict({{menukey::kRightMenu, Value::makeArray()},
                                        {"common path next menu", Value("3")}})),
         "whole number"},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.name);
        auto imported = exchange::importConfiguration(*suite, item.path);
        ASSERT_TRUE(imported.isError());
        EXPECT_NE(imported.error().message.find(item.because), std::string::npos)
            << imported.error().message;
        EXPECT_EQ(configuration(), before);
    }
}

TEST_F(ConfigExchangeTest, UnknownKeysAreLeftOutOfTheImport) {
    auto path = writePlist("extra.plist", dict({{menukey::kCommonPath, Value::makeArray()},
                                                {"use count", Value(99)},
                                                {"something new", Value(true)}}));
    ASSERT_FALSE(exchange::importConfiguration(*suite, path).isError());
    EXPECT_EQ(suite->integerForKey("use count"), 7);
    EXPECT_FALSE(suite->objectForKey("something new"));
    EXPECT_FALSE(suite->objectForKey(menukey::kRightMenu));
}

} // namespace
