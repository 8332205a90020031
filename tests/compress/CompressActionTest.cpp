// The compress action as the user meets it: the save panel, the progress window, the archive on
// disk and what 7-Zip makes of it.
#include "CompressTestSupport.h"
#include "archive/PXCompress.h"
#include "extension/ExtensionFixture.h"

#include <filesystem>

using namespace px;
using namespace px::test;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;

namespace {

class CompressActionTest : public ExtensionFixture {
  protected:
    void compress(std::vector<std::string> paths, const std::string& answer) {
        select(std::move(paths), work.path());
        ui->answer(answer);
        sync.encryptedCompress(nullptr);
        queue::runUntilIdle();
    }
    std::vector<double> percents() const {
        std::vector<double> result;
        for (const auto& event : ui->progress())
            if (event.kind == Kind::Percent) result.push_back(event.fraction);
        return result;
    }
    std::vector<Kind> kinds() const {
        std::vector<Kind> result;
        for (const auto& event : ui->progress())
            result.push_back(event.kind);
        return result;
    }
    std::vector<std::string> alertTexts() const {
        std::vector<std::string> result;
        for (const auto& alert : ui->alerts())
            result.push_back(alert.informative);
        return result;
    }
    // The job ended and let go of the window and of itself.
    void expectIdle() {
        EXPECT_FALSE(sync.compress);
        EXPECT_FALSE(kinds().empty());
        if (!kinds().empty()) {
            EXPECT_EQ(kinds().back(), Kind::Close);
        }
    }

    FinderSync sync;
    TempDir out;
};

TEST_F(CompressActionTest, OneFileIsProposedByNameAndPackedWithAes) {
    const std::string file = work.write("a.txt", "secret text");
    compress({file}, "save " + out / "a.zip" + " password pw");
    ASSERT_EQ(ui->saves().size(), 1u);
    EXPECT_EQ(ui->saves()[0].name, "a");
    EXPECT_EQ(ui->saves()[0].directory, work.path());
    EXPECT_TRUE(ui->saves()[0].passwordAccessory);
    const auto entries = zipEntries(out / "a.zip");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].name, "a.txt");
    EXPECT_TRUE(entries[0].encrypted);
    EXPECT_EQ(entries[0].aesStrength, 3);
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Open, Kind::Percent, Kind::Close}));
    EXPECT_EQ(percents(), (std::vector<double>{1.0}));
    EXPECT_TRUE(ui->alerts().empty());
    expectIdle();
}

TEST_F(CompressActionTest, SevenZipNeedsTheRightPassword) {
    if (sevenZip().empty()) GTEST_SKIP() << "7-Zip is not installed";
    const std::string file = work.write("notes.md", "for your eyes only");
    work.write("F/inner.txt", "also secret");
    compress({file, work / "F"}, "save " + out / "x" + " password s3cret pass");
    const std::string archive = out / "x.zip"; // the panel adds the extension
    ASSERT_TRUE(exists(archive));
    TempDir wrong, right;
    EXPECT_NE(extractWithSevenZip(archive, wrong.path(), "nope").exitStatus, 0);
    for (const auto& name : treeOf(wrong.path()))
        if (!name.ends_with("/")) {
            EXPECT_NE(readFile(wrong / name), "for your eyes only");
        }
    ProcessResult extracted = extractWithSevenZip(archive, right.path(), "s3cret pass");
    ASSERT_EQ(extracted.exitStatus, 0) << extracted.out << extracted.err;
    EXPECT_EQ(readFile(right / "notes.md"), "for your eyes only");
    EXPECT_EQ(readFile(right / "F/inner.txt"), "also secret");
}

TEST_F(CompressActionTest, SeveralItemsKeepTheFolderShapeWithOnlyEmptyFoldersAsEntries) {
    const std::string a = work.write("a.txt", "a"), b = work.write("b.bin", "b");
    work.write("F/x", "x");
    work.write("F/sub/y", "y");
    work.write("F/.hidden", "h");
    work.mkdir("F/e");
    compress({a, b, work / "F"}, "save " + out / "all.zip");
    EXPECT_EQ(ui->saves().at(0).name, localized("Archiver"));
    std::vector<std::string> names = entryNames(out / "all.zip");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names,
              (std::vector<std::string>{"F/.hidden", "F/e/", "F/sub/y", "F/x", "a.txt", "b.bin"}));
    for (const auto& entry : zipEntries(out / "all.zip"))
        EXPECT_FALSE(entry.encrypted) << entry.name;
    // 2 files + F's 5 entries (x, sub, sub/y, .hidden, e) = 7 items.
    const std::vector<double> seen = percents();
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_DOUBLE_EQ(seen.back(), 1.0);
    for (double fraction : seen)
        EXPECT_NEAR(fraction * 7, std::round(fraction * 7), 1e-9) << fraction;
    expectIdle();
}

TEST_F(CompressActionTest, OnlyEmptyFolderEntriesStayUnencrypted) {
    work.write("F/x", "x");
    work.mkdir("F/e");
    compress({work / "F"}, "save " + out / "F.zip password pw");
    EXPECT_EQ(ui->saves().at(0).name, "F");
    for (const auto& entry : zipEntries(out / "F.zip"))
        EXPECT_EQ(entry.encrypted, entry.name == "F/x") << entry.name;
}

TEST_F(CompressActionTest, AnEmptySelectedFolderGivesAnEmptyArchiveAndTheWindowWaits) {
    const std::string empty = work.mkdir("Nothing");
    compress({empty}, "save " + out / "n.zip");
    ASSERT_TRUE(exists(out / "n.zip"));
    EXPECT_TRUE(entryNames(out / "n.zip").empty());
    // No item was done, so nothing reported progress: the window waits and the job stays set
    // until something cleans up; meanwhile another compress is ignored.
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Open}));
    EXPECT_TRUE(sync.compress);
    sync.encryptedCompress(nullptr);
    EXPECT_EQ(ui->saves().size(), 1u);
    sync.clean();
    EXPECT_FALSE(sync.compress);
    EXPECT_EQ(kinds().back(), Kind::Close);
}

TEST_F(CompressActionTest, TheArchiveInsideASelectedFolderIsSkippedButCounted) {
    work.write("F/x", "x");
    work.write("F/F.zip", "an older archive");
    compress({work / "F"}, "save " + (work / "F/F.zip") + " password pw");
    EXPECT_EQ(entryNames(work / "F/F.zip"), (std::vector<std::string>{"F/x"}));
    EXPECT_DOUBLE_EQ(percents().back(), 1.0);
    EXPECT_TRUE(ui->alerts().empty());
    // A new archive there is not met while listing at all.
    compress({work / "F"}, "save " + (work / "F/new.zip"));
    std::vector<std::string> names = entryNames(work / "F/new.zip");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"F/F.zip", "F/x"}));
    expectIdle();
}

TEST_F(CompressActionTest, CancellingThePanelCreatesNothing) {
    const std::string file = work.write("a.txt", "a");
    compress({file}, "cancel");
    EXPECT_TRUE(treeOf(out.path()).empty());
    EXPECT_TRUE(ui->progress().empty());
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_FALSE(sync.compress);
}

TEST_F(CompressActionTest, CancelHalfWayLeavesNothingAndSaysNothing) {
    work.write("a.txt", "first");
    writeRandomFile(work / "b.bin", 48 << 20);
    work.write("c.txt", "last");
    select({work / "a.txt", work / "b.bin", work / "c.txt"}, work.path());
    ui->answer("save " + out / "big.zip password pw");
    sync.encryptedCompress(nullptr);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (percents().empty() && std::chrono::steady_clock::now() < deadline)
        if (queue::runPendingOnce() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_EQ(percents().size(), 1u) << "the first item should be reported on its own";
    ui->cancelProgress();
    EXPECT_EQ(kinds().back(), Kind::Close); // the window goes at once
    queue::runUntilIdle();
    EXPECT_TRUE(treeOf(out.path()).empty());
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_FALSE(sync.compress);
    EXPECT_EQ(percents().size(), 1u);
}

TEST_F(CompressActionTest, AnUnpackableItemFailsTheJobAndKeepsAnOlderArchive) {
    const std::string a = work.write("a.txt", "a");
    makeFifo(work / "pipe");
    const std::string archive = out.write("keep.zip", "the archive from before");
    ui->answers({"save " + archive + " password pw", "button 1000"});
    select({a, work / "pipe"}, work.path());
    sync.encryptedCompress(nullptr);
    queue::runUntilIdle();
    EXPECT_EQ(alertTexts(), (std::vector<std::string>{localized("Compression Failed")}));
    EXPECT_EQ(treeOf(out.path()), (std::vector<std::string>{"keep.zip"}));
    EXPECT_EQ(readFile(archive), "the archive from before");
    expectIdle();
    compress({work / "pipe"}, "save " + out / "p.zip");
    EXPECT_FALSE(exists(out / "p.zip"));
    EXPECT_EQ(ui->alerts().size(), 2u);
}

TEST_F(CompressActionTest, AFolderThatCannotTakeTheArchiveFails) {
    const std::string a = work.write("a.txt", "a");
    ui->answers({"save " + out / "missing/a.zip", "button 1000"});
    select({a}, work.path());
    sync.encryptedCompress(nullptr);
    queue::runUntilIdle();
    EXPECT_EQ(alertTexts(), (std::vector<std::string>{localized("Compression Failed")}));
    EXPECT_TRUE(treeOf(out.path()).empty());
    expectIdle();
}

TEST_F(CompressActionTest, BlankOrNullPasswordsMeanNoEncryption) {
    const std::string a = work.write("a.txt", "plain");
    for (const std::string password : {" password    ", " password (null)"}) {
        std::filesystem::remove(out / "a.zip");
        compress({a}, "save " + out / "a.zip" + password);
        const auto entries = zipEntries(out / "a.zip");
        ASSERT_EQ(entries.size(), 1u) << password;
        EXPECT_FALSE(entries[0].encrypted) << password;
    }
}

TEST_F(CompressActionTest, TheMenuEntryRunsTheJob) {
    const std::string a = work.write("a.txt", "a");
    select({a}, work.path());
    Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
    const MenuEntry* entry = find(menu, "Encrypted Compression");
    ASSERT_TRUE(entry);
    ui->answer("save " + out / "m.zip");
    sync.onMenuItemAction(entry->tag);
    queue::runUntilIdle();
    EXPECT_EQ(entryNames(out / "m.zip"), (std::vector<std::string>{"a.txt"}));
    EXPECT_EQ(suite->integerForKey("Encrypted Compression"), 1);
}

} // namespace
