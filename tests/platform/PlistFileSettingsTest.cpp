#include "platform/linux/PlistFileSettings.h"

#include "config/PlistCodec.h"
#include "support/ReadScope.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace px;
using px::plist::Value;

namespace {

class PlistFileSettingsTest : public ::testing::Test {
  protected:
    std::string path() const { return dir / "group.plist"; }
    test::TempDir dir;
};

TEST_F(PlistFileSettingsTest, WritesSurviveANewReader) {
    platform::PlistFileSettings writer(path());
    writer.setObject("array right menu",
                     Value::makeArray({Value::makeDictionary({{"key", Value("Делать")}})}));
    writer.setBool("pref check0", true);
    platform::PlistFileSettings reader(path());
    EXPECT_TRUE(reader.boolForKey("pref check0"));
    EXPECT_EQ(reader.arrayForKey("array right menu").array()[0].get("key"), Value("Делать"));
    EXPECT_NE(test::readFile(path()).find("<plist"), std::string::npos);
}

TEST_F(PlistFileSettingsTest, ReadsSeeChangesMadeByOthers) {
    platform::PlistFileSettings mine(path()), theirs(path());
    mine.setInteger("use count", 1);
    EXPECT_EQ(theirs.integerForKey("use count"), 1);
    theirs.setInteger("use count", 2);
    EXPECT_EQ(mine.integerForKey("use count"), 2);
    mine.removeObject("use count");
    EXPECT_FALSE(theirs.objectForKey("use count"));
}

TEST_F(PlistFileSettingsTest, AReadScopeSeesOneVersionAndTheNextScopeTheNewOne) {
    platform::PlistFileSettings mine(path()), theirs(path());
    theirs.setInteger("use count", 1);
    {
        ReadScope scope;
        EXPECT_EQ(mine.integerForKey("use count"), 1);
        theirs.setInteger("use count", 2);
        theirs.setBool("pref check0", true);
        EXPECT_EQ(mine.integerForKey("use count"), 1);
        EXPECT_FALSE(mine.boolForKey("pref check0"));
        ReadScope nested;
        EXPECT_EQ(mine.integerForKey("use count"), 1);
    }
    EXPECT_EQ(mine.integerForKey("use count"), 2);
    ReadScope next;
    EXPECT_TRUE(mine.boolForKey("pref check0"));
}

TEST_F(PlistFileSettingsTest, WritesInsideAReadScopeKeepOthersKeysAndAreSeenAtOnce) {
    platform::PlistFileSettings mine(path()), theirs(path());
    ReadScope scope;
    EXPECT_FALSE(mine.objectForKey("use count"));
    theirs.setInteger("use count", 5);
    EXPECT_EQ(mine.increment("use count"), 6);
    mine.setBool("pref check0", true);
    EXPECT_TRUE(mine.boolForKey("pref check0"));
    platform::PlistFileSettings reader(path());
    EXPECT_EQ(reader.integerForKey("use count"), 6);
    EXPECT_TRUE(reader.boolForKey("pref check0"));
}

TEST_F(PlistFileSettingsTest, ScopesOnOtherThreadsCheckTheFileThemselves) {
    platform::PlistFileSettings mine(path()), theirs(path());
    theirs.setInteger("use count", 1);
    ReadScope scope;
    EXPECT_EQ(mine.integerForKey("use count"), 1);
    theirs.setInteger("use count", 2);
    std::int64_t seen = 0;
    std::thread([&] {
        ReadScope other;
        seen = mine.integerForKey("use count");
    }).join();
    EXPECT_EQ(seen, 2);
}

TEST_F(PlistFileSettingsTest, StoredValuesAreDetachedFromTheCaller) {
    platform::PlistFileSettings suite(path());
    Value list = Value::makeMutableArray({Value("a")});
    suite.setObject("list", list);
    list.mutableArray().push_back(Value("b"));
    EXPECT_EQ(suite.arrayForKey("list").array().size(), 1u);
    EXPECT_FALSE(suite.arrayForKey("list").isMutable());
}

TEST_F(PlistFileSettingsTest, ConcurrentWritersOfDifferentKeysLoseNothing) {
    constexpr int kProcesses = 4, kKeys = 25;
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p) {
        pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            platform::PlistFileSettings suite(path());
            for (int k = 0; k < kKeys; ++k)
                suite.setInteger("p" + std::to_string(p) + "k" + std::to_string(k), k);
            for (int k = 0; k < kKeys; ++k)
                suite.increment("shared counter");
            ::_exit(0);
        }
        children.push_back(pid);
    }
    for (pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    platform::PlistFileSettings reader(path());
    for (int p = 0; p < kProcesses; ++p)
        for (int k = 0; k < kKeys; ++k)
            EXPECT_EQ(reader.integerForKey("p" + std::to_string(p) + "k" + std::to_string(k)), k);
    EXPECT_EQ(reader.integerForKey("shared counter"), kProcesses * kKeys);
}

TEST_F(PlistFileSettingsTest, ADamagedFileReadsEmptyAndIsKeptAsideBeforeAWrite) {
    platform::PlistFileSettings good(path());
    good.setString("update version", "2.6.0");
    std::string text = test::readFile(path());
    std::string truncated = text.substr(0, text.size() / 2);
    dir.write("group.plist", truncated);
    platform::PlistFileSettings suite(path());
    testing::internal::CaptureStderr();
    EXPECT_FALSE(suite.objectForKey("update version"));
    EXPECT_FALSE(suite.objectForKey("anything"));
    std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("damaged"), std::string::npos);
    EXPECT_EQ(std::count(reported.begin(), reported.end(), '\n'), 1);
    suite.setBool("pref check1", true);
    EXPECT_EQ(test::readFile(path() + ".broken"), truncated);
    EXPECT_TRUE(suite.boolForKey("pref check1"));
}

TEST_F(PlistFileSettingsTest, AnEarlierBrokenCopyIsNeverOverwritten) {
    dir.write("group.plist.broken", "first");
    dir.write("group.plist", "second <plist");
    platform::PlistFileSettings suite(path());
    testing::internal::CaptureStderr();
    suite.setBool("x", true);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(test::readFile(path() + ".broken"), "first");
    EXPECT_EQ(test::readFile(path() + ".broken-1"), "second <plist");
}

TEST_F(PlistFileSettingsTest, ANonDictionaryRootCountsAsDamaged) {
    auto bytes = plist::serialize(Value::makeArray({Value(1)}));
    ASSERT_FALSE(bytes.isError());
    dir.write("group.plist", bytes.value());
    platform::PlistFileSettings suite(path());
    testing::internal::CaptureStderr();
    EXPECT_FALSE(suite.objectForKey("0"));
    suite.setInteger("k", 1);
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(test::exists(path() + ".broken"));
}

TEST_F(PlistFileSettingsTest, MissingFolderIsCreatedOnFirstWrite) {
    platform::PlistFileSettings suite(dir / "a/b/group.plist");
    EXPECT_FALSE(suite.objectForKey("k"));
    suite.setInteger("k", 5);
    EXPECT_EQ(platform::PlistFileSettings(dir / "a/b/group.plist").integerForKey("k"), 5);
}

TEST_F(PlistFileSettingsTest, TypedReadersConvertLoosely) {
    platform::PlistFileSettings suite(path());
    suite.setString("yes", "YES");
    suite.setString("num", "12abc");
    suite.setObject("real", Value(2.9));
    EXPECT_TRUE(suite.boolForKey("yes"));
    EXPECT_EQ(suite.integerForKey("num"), 12);
    EXPECT_EQ(suite.integerForKey("real"), 2);
    EXPECT_EQ(suite.stringForKey("real"), "2.9");
    EXPECT_FALSE(suite.stringForKey("absent"));
    EXPECT_FALSE(suite.arrayForKey("yes"));
}

} // namespace
