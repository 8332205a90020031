// The end-to-end runs in script mode and again with the real windows answered in driven mode:
// the transcripts must be the same line for line, and the work done the same.
#include "GuiSession.h"

#include <filesystem>
#include <random>

using namespace px::test;

namespace {

class DrivenModeTest : public GuiFixture {
  protected:
    // Runs the entry both ways; `reset` puts the folders back after each run.
    void expectSameTranscripts(const Strings& keyPath, const Strings& args,
                               const std::string& answers, const std::function<void()>& check,
                               const std::function<void()>& reset) {
        const int tag = tagAt(keyPath, args);
        ASSERT_GE(tag, 0) << keyPath.back() << " is not offered";
        ProcessResult scripted = runTag(tag, args, answers);
        ASSERT_EQ(scripted.exitStatus, 0) << scripted.err;
        check();
        reset();
        ProcessResult real = driven(tag, args, answers);
        ASSERT_EQ(real.exitStatus, 0) << real.err;
        EXPECT_EQ(transcript(real.out), transcript(scripted.out))
            << "script mode:\n"
            << scripted.out << "driven windows:\n"
            << real.out;
        check();
        reset();
    }
    void removeAll(const std::string& folder) {
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            std::filesystem::remove_all(entry.path());
    }
    TempDir out;
};

TEST_F(DrivenModeTest, CompressWithPasswordAndHalfWayCancel) {
    const std::string a = work.write("a.txt", "alpha");
    const std::string zip = out / "a.zip";
    expectSameTranscripts(
        {"Encrypted Compression"}, request(0, work.path(), {a}), "save " + zip + " password pw\n",
        [&] { EXPECT_TRUE(exists(zip)); }, [&] { removeAll(out.path()); });
    // Enough files for several progress steps; Cancel once half is done: no archive is left.
    Strings many;
    // Contents that do not shrink, so that the deflating takes long enough to be cancelled.
    std::mt19937 noise(7);
    for (int index = 0; index < 40; ++index) {
        std::string bytes(1 << 18, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(noise());
        many.push_back(work.write("big/f" + std::to_string(index), bytes));
    }
    expectSameTranscripts(
        {"Encrypted Compression"}, request(0, work.path(), {work / "big"}),
        "save " + out / "big.zip" + " password pw\nstop 50\n",
        [&] { EXPECT_TRUE(listing(out.path()).empty()); }, [&] { removeAll(out.path()); });
}

TEST_F(DrivenModeTest, NewFileWithTheTypeChosenBeforeAndAfterTheName) {
    const Strings args = request(1, work.path());
    auto templates = nlohmann::json::parse(pxmenu({"config", "show", "array new file"}).out);
    std::string md;
    for (std::size_t i = 0; i < templates.size(); ++i)
        if (templates[i].at("key") == "md") md = std::to_string(i);
    ASSERT_FALSE(md.empty());
    expectSameTranscripts(
        {"New File", "New File From Window"}, args, "choose " + md + "\nsave notes\n",
        [&] { EXPECT_TRUE(exists(work / "notes.md")) << listing(work.path()).size(); },
        [&] { removeAll(work.path()); });
    expectSameTranscripts(
        {"New File", "New File From Window"}, args, "save plan\nchoose " + md + "\n",
        [&] { EXPECT_TRUE(exists(work / "plan.md")); }, [&] { removeAll(work.path()); });
}

TEST_F(DrivenModeTest, EmbedCopyWithTheFolderChooserAndReview) {
    const std::string a = work.write("a.txt", "alpha"), b = work.write("b.txt", "beta");
    // A name the dialog refuses first, then one it takes.
    expectSameTranscripts(
        {"Embed in Folder"}, request(0, work.path(), {a, b}), "embed 0 x/y\nembed 1 Box\n",
        [&] { EXPECT_TRUE(exists(work / "Box/txt/a.txt")) << listing(work / "Box").size(); },
        [&] {
            std::filesystem::rename(work / "Box/txt/a.txt", a);
            std::filesystem::rename(work / "Box/txt/b.txt", b);
            std::filesystem::remove_all(work / "Box");
        });
    TempDir target;
    expectSameTranscripts(
        {"Copy to", "Select Folder"}, request(0, work.path(), {a}), "open " + target.path() + "\n",
        [&] { EXPECT_TRUE(exists(target / "a.txt")); }, [&] { removeAll(target.path()); });
}

TEST_F(DrivenModeTest, TheDelayedReviewPromptIsAnsweredLikeAnyOther) {
    ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "false"}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "use count", "2"}).exitStatus, 0);
    const std::string a = work.write("a.txt", "alpha");
    const int tag = tagAt({"Copy Path"}, request(0, work.path(), {a}));
    ASSERT_GE(tag, 0);
    ProcessResult scripted = runTag(tag, request(0, work.path(), {a}), "button 1001\n");
    ASSERT_EQ(pxmenu({"config", "set", "pref", "use count", "2"}).exitStatus, 0);
    ProcessResult real = driven(tag, request(0, work.path(), {a}), "button 1001\n");
    ASSERT_EQ(real.exitStatus, 0) << real.err;
    EXPECT_EQ(transcript(real.out), transcript(scripted.out)) << scripted.out << real.out;
    EXPECT_FALSE(withKey(real.out, "buttons").empty()) << "the review prompt was shown";
}

} // namespace
