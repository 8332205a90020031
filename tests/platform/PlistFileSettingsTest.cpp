#include "platform/linux/PlistFileSettings.h"

#include "plist/PlistCodec.h"
#include "support/ReadScope.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace px;
using platform::PlistFileSettings;
using px::plist::Value;

namespace {

class PlistFileSettingsTest : public ::testing::Test {
  protected:
    std::string path() const { return dir / "group.plist"; }
    // Reads a damaged file and writes over it, answering what was reported.
    std::string writeOverDamage() {
        PlistFileSettings suite(path());
        testing::internal::CaptureStderr();
        EXPECT_FALSE(suite.objectForKey("update version"));
        suite.setBool("pref check1", true);
        EXPECT_TRUE(suite.boolForKey("pref check1"));
        return testing::internal::GetCapturedStderr();
    }
    test::TempDir dir;
    PlistFileSettings mine{dir / "group.plist"}, theirs{dir / "group.plist"};
};

TEST_F(PlistFileSettingsTest, WritesReachOtherReadersAndReadsLooseTypes) {
    mine.setObject("list", Value::makeArray({Value::makeDictionary({{"key", Value("Делать")}})}));
    mine.setString("num", "12abc");
    mine.setObject("real", Value(2.9));
    EXPECT_EQ(theirs.arrayForKey("list").array()[0].get("key"), Value("Делать"));
    EXPECT_EQ(theirs.integerForKey("num"), 12);
    EXPECT_EQ(theirs.stringForKey("real"), "2.9");
    EXPECT_FALSE(theirs.arrayForKey("num"));
    theirs.removeObject("num");
    EXPECT_FALSE(mine.objectForKey("num"));
    EXPECT_NE(test::readFile(path()).find("<plist"), std::string::npos);
}

TEST_F(PlistFileSettingsTest, StoredValuesAreDetachedFromTheCaller) {
    Value list = Value::makeMutableArray({Value("a")});
    mine.setObject("list", list);
    list.mutableArray().push_back(Value("b"));
    EXPECT_EQ(mine.arrayForKey("list").array().size(), 1u);
    EXPECT_FALSE(mine.arrayForKey("list").isMutable());
}

TEST_F(PlistFileSettingsTest, AReadScopeSeesOneVersionWhileItsOwnWritesKeepOthersKeys) {
    theirs.setInteger("use count", 1);
    {
        ReadScope scope;
        EXPECT_EQ(mine.integerForKey("use count"), 1);
        theirs.setInteger("use count", 5);
        theirs.setBool("pref check0", true);
        EXPECT_EQ(mine.integerForKey("use count"), 1);
        EXPECT_FALSE(mine.boolForKey("pref check0"));
        std::int64_t onOtherThread = 0;
        std::thread([&] {
            ReadScope other;
            onOtherThread = mine.integerForKey("use count");
        }).join();
        EXPECT_EQ(onOtherThread, 5) << "a scope on another thread checks the file itself";
        EXPECT_EQ(mine.increment("use count"), 6);
        mine.setBool("pref check6", true);
        EXPECT_TRUE(mine.boolForKey("pref check6"));
    }
    PlistFileSettings reader(path());
    EXPECT_EQ(reader.integerForKey("use count"), 6);
    EXPECT_TRUE(reader.boolForKey("pref check0") && reader.boolForKey("pref check6"));
}

TEST_F(PlistFileSettingsTest, ConcurrentWritersOfDifferentKeysLoseNothing) {
    constexpr int kProcesses = 4, kKeys = 25;
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p) {
        pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            PlistFileSettings suite(path());
            for (int k = 0; k < kKeys; ++k) {
                suite.setInteger("p" + std::to_string(p) + "k" + std::to_string(k), k);
                suite.increment("shared counter");
            }
            ::_exit(0);
        }
        children.push_back(pid);
    }
    for (pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    for (int p = 0; p < kProcesses; ++p)
        for (int k = 0; k < kKeys; ++k)
            EXPECT_EQ(mine.integerForKey("p" + std::to_string(p) + "k" + std::to_string(k)), k);
    EXPECT_EQ(mine.integerForKey("shared counter"), kProcesses * kKeys);
}

TEST_F(PlistFileSettingsTest, ADamagedFileIsReportedOnceAndKeptAsideNeverOverwritten) {
    theirs.setString("update version", "2.6.0");
    std::string text = test::readFile(path());
    dir.write("group.plist", text.substr(0, text.size() / 2));
    std::string reported = writeOverDamage();
    EXPECT_NE(reported.find("damaged"), std::string::npos);
    EXPECT_EQ(std::count(reported.begin(), reported.end(), '\n'), 1);
    EXPECT_EQ(test::readFile(path() + ".broken"), text.substr(0, text.size() / 2));

    dir.write("group.plist", plist::serialize(Value::makeArray({Value(1)})).value());
    writeOverDamage(); // a root that is no dictionary
    EXPECT_EQ(test::readFile(path() + ".broken"), text.substr(0, text.size() / 2));
    EXPECT_TRUE(test::exists(path() + ".broken-1"));
}

TEST_F(PlistFileSettingsTest, CountersStopAtTheLargestInteger) {
    const std::vector<std::pair<const char*, std::string>> stored{
        {"an integer", "<integer>9223372036854775807</integer>"},
        {"a real past it", "<real>1e300</real>"},
        {"one below", "<integer>9223372036854775806</integer>"},
    };
    for (const auto& [what, xml] : stored) {
        SCOPED_TRACE(what);
        dir.write("group.plist", "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict>"
                                 "<key>use count</key>" +
                                     xml + "</dict></plist>\n");
        EXPECT_EQ(mine.increment("use count"), INT64_MAX);
        EXPECT_EQ(mine.increment("use count"), INT64_MAX);
        EXPECT_EQ(theirs.integerForKey("use count"), INT64_MAX);
    }
}

} // namespace
