// The compress action as the user meets it: the save panel, the progress window and the archive
// on disk. The command-line tests check the password with 7-Zip.
#include "archive/PXCompress.h"
#include "extension/ExtensionFixture.h"
#include "support_files/FakeUiLog.h"
#include "support_files/ZipListing.h"

#include <filesystem>
#include <random>
#include <sys/stat.h>

using namespace px;
using namespace px::test;
using Kind = px::platform::FakeUi::ProgressEvent::Kind;
using Names = std::vector<std::string>;

namespace {

class CompressActionTest : public ExtensionFixture {
  protected:
    void compress(Names paths, const std::vector<std::string>& answers) {
        select(std::move(paths), work.path());
        for (const auto& line : answers)
            ui->answer(line);
        commands::compress(sync.cx());
        queue::runUntilIdle();
    }
    Names sortedEntries(const std::string& archive) const {
        Names names = zipEntryNames(archive);
        std::sort(names.begin(), names.end());
        return names;
    }
    // The job ended and let go of the window and of itself.
    void expectIdle() {
        EXPECT_FALSE(sync.cx().compress);
        EXPECT_FALSE(progressKinds(*ui).empty() || progressKinds(*ui).back() != Kind::Close);
    }

    Session sync{*this};
    TempDir out;
};

// Folders are walked: files and empty folders become entries, empty folders unencrypted, and
// progress counts every entry.
TEST_F(CompressActionTest, SeveralItemsKeepTheFolderShapeWithOnlyEmptyFoldersAsEntries) {
    const std::string a = work.write("a.txt", "a"), b = work.write("b.bin", "b");
    work.write("F/x", "x");
    work.write("F/sub/y", "y");
    work.write("F/.hidden", "h");
    work.mkdir("F/e");
    compress({a, b, work / "F"}, {"save " + out / "all.zip" + " password pw"});
    EXPECT_EQ(ui->saves().at(0).name, localized("Archiver"));
    EXPECT_EQ(sortedEntries(out / "all.zip"),
              (Names{"F/.hidden", "F/e/", "F/sub/y", "F/x", "a.txt", "b.bin"}));
    for (const auto& entry : zipEntries(out / "all.zip"))
        EXPECT_EQ(entry.encrypted(), !entry.name.ends_with("/")) << entry.name;
    // 6 entries: 2 files + F's x, sub/y, .hidden and e (sub has contents, so no entry).
    const std::vector<double> seen = progressFractions(*ui);
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_DOUBLE_EQ(seen.back(), 1.0);
    for (double fraction : seen)
        EXPECT_NEAR(fraction * 6, std::round(fraction * 6), 1e-9) << fraction;
    expectIdle();
}

TEST_F(CompressActionTest, AnEmptySelectedFolderGivesAnEmptyArchiveAndTheWindowWaits) {
    compress({work.mkdir("Nothing")}, {"save " + out / "n.zip"});
    ASSERT_TRUE(exists(out / "n.zip"));
    EXPECT_TRUE(zipEntries(out / "n.zip").empty());
    // No item was done, so nothing reported progress: the window waits and the job stays set
    // until something cleans up; meanwhile another compress is ignored.
    EXPECT_EQ(progressKinds(*ui), (std::vector<Kind>{Kind::Open}));
    commands::compress(sync.cx());
    EXPECT_EQ(ui->saves().size(), 1u);
    sync.cx().clean();
    expectIdle();
}

TEST_F(CompressActionTest, TheArchiveInsideASelectedFolderIsSkippedButCounted) {
    work.write("F/x", "x");
    work.write("F/F.zip", "an older archive");
    compress({work / "F"}, {"save " + (work / "F/F.zip") + " password pw"});
    EXPECT_EQ(zipEntryNames(work / "F/F.zip"), Names{"F/x"});
    EXPECT_DOUBLE_EQ(progressFractions(*ui).back(), 1.0);
    EXPECT_TRUE(ui->alerts().empty());
    // A new archive there is not met while listing at all.
    compress({work / "F"}, {"save " + (work / "F/new.zip")});
    EXPECT_EQ(sortedEntries(work / "F/new.zip"), (Names{"F/F.zip", "F/x"}));
    expectIdle();
}

TEST_F(CompressActionTest, CancellingThePanelCreatesNothing) {
    compress({work.write("a.txt", "a")}, {"cancel"});
    EXPECT_TRUE(treeOf(out.path()).empty());
    EXPECT_TRUE(ui->progress().empty() && ui->alerts().empty());
    EXPECT_FALSE(sync.cx().compress);
}

TEST_F(CompressActionTest, CancelHalfWayLeavesNothingAndSaysNothing) {
    work.write("a.txt", "first");
    std::string noise(48 << 20, '\0'); // hard to compress: packing it takes a while
    std::generate(noise.begin(), noise.end(), std::mt19937(1));
    work.write("b.bin", noise);
    work.write("c.txt", "last");
    select({work / "a.txt", work / "b.bin", work / "c.txt"}, work.path());
    ui->answer("save " + out / "big.zip password pw");
    commands::compress(sync.cx());
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (progressFractions(*ui).empty() && std::chrono::steady_clock::now() < deadline)
        if (queue::runPendingOnce() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_EQ(progressFractions(*ui).size(), 1u) << "the first item should be reported on its own";
    ui->cancelProgress();
    EXPECT_EQ(progressKinds(*ui).back(), Kind::Close); // the window goes at once
    queue::runUntilIdle();
    EXPECT_TRUE(treeOf(out.path()).empty());
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_FALSE(sync.cx().compress);
    EXPECT_EQ(progressFractions(*ui).size(), 1u);
}

// A pipe cannot be packed; a missing folder cannot take the archive. Either way one alert, and
// an archive already at that path stays as it was.
TEST_F(CompressActionTest, AFailedJobAlertsOnceAndKeepsAnOlderArchive) {
    const std::string a = work.write("a.txt", "a");
    ASSERT_EQ(::mkfifo((work / "pipe").c_str(), 0644), 0);
    const std::string archive = out.write("keep.zip", "the archive from before");
    const std::pair<Names, std::string> cases[] = {{{a, work / "pipe"}, archive},
                                                   {{work / "pipe"}, out / "p.zip"},
                                                   {{a}, out / "missing/a.zip"}};
    for (const auto& [items, target] : cases) {
        SCOPED_TRACE(target);
        const std::size_t alertsBefore = ui->alerts().size();
        compress(items, {"save " + target + " password pw", "button 1000"});
        ASSERT_EQ(ui->alerts().size(), alertsBefore + 1);
        EXPECT_EQ(ui->alerts().back().informative, localized("Compression Failed"));
        EXPECT_EQ(treeOf(out.path()), Names{"keep.zip"});
        EXPECT_EQ(readFile(archive), "the archive from before");
        expectIdle();
    }
}

// One file is proposed by its name beside itself; a password means AES-256, a blank or "(null)"
// one none. Progress: the window, one step, closed.
TEST_F(CompressActionTest, OneFileIsProposedByNameAndPackedWithAesOnlyWithAPassword) {
    const std::string a = work.write("a.txt", "plain");
    for (const auto& [password, aes] : {std::pair<std::string, int>{" password pw", 3},
                                        {" password    ", 0},
                                        {" password (null)", 0}}) {
        SCOPED_TRACE(password);
        std::filesystem::remove(out / "a.zip");
        compress({a}, {"save " + out / "a.zip" + password});
        const auto entries = zipEntries(out / "a.zip");
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].name, "a.txt");
        EXPECT_EQ(entries[0].encrypted(), aes > 0);
        EXPECT_EQ(entries[0].aesStrength, aes);
        EXPECT_EQ(ui->saves().back().name, "a");
        EXPECT_TRUE(ui->saves().back().passwordAccessory);
    }
    EXPECT_EQ(progressFractions(*ui), (std::vector<double>{1.0, 1.0, 1.0}));
    EXPECT_TRUE(ui->alerts().empty());
    expectIdle();
}

} // namespace
