// The job's worker on its own: the reports it makes and what it leaves on disk.
#include "../actions/PrivilegeDrop.h"
#include "archive/PXCompress.h"
#include "support/Localization.h"
#include "support_files/TestSupport.h"
#include "support_files/ZipListing.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

using namespace px;
using namespace px::test;

namespace {

using Report = CompressReport;
using Kind = CompressReport::Kind;
using Reports = std::vector<Report>;

class CompressJobTest : public ::testing::Test {
  protected:
    // Runs the worker on this thread; `onReport` sees every report as it is made.
    Reports run(const std::vector<std::string>& paths, const std::string& archive,
                std::function<void(const Report&)> onReport = {}) {
        Reports reports;
        job->savePath = archive;
        job->startCompressWithPaths(paths, std::string("pw"), [&](const Report& report) {
            reports.push_back(report);
            if (onReport) onReport(reports.back());
        });
        return reports;
    }

    std::shared_ptr<PXCompress> job = std::make_shared<PXCompress>();
    TempDir work, out;
};

TEST_F(CompressJobTest, TheDefaultNameIsTheItemsNameOrArchiver) {
    EXPECT_EQ(PXCompress::defaultArchiveName({"/d/Photos"}), "Photos");
    EXPECT_EQ(PXCompress::defaultArchiveName({"/d/a.tar.gz"}), "a.tar");
    EXPECT_EQ(PXCompress::defaultArchiveName({"/d/a", "/d/b"}), localized("Archiver"));
}

TEST_F(CompressJobTest, EveryEntryWrittenIsOneStepAndTheLastWaitsForTheArchive) {
    const std::string a = work.write("a.txt", "a");
    work.write("F/sub/y", "y"); // F/sub has contents, so only F/sub/y is an entry
    const std::string archive = out / "r.zip";
    bool completeAtLastReport = false;
    Reports reports = run({a, work / "F"}, archive, [&](const Report& report) {
        if (report.isComplete()) completeAtLastReport = !zipEntryNames(archive).empty();
    });
    EXPECT_EQ(reports, (Reports{{Kind::Started}, {Kind::Progress, 1, 2}, {Kind::Progress, 2, 2}}));
    EXPECT_TRUE(completeAtLastReport);
}

// Folders with contents, at several levels, make no entries and no steps of their own.
TEST_F(CompressJobTest, NestedFoldersWithContentsAdvanceOneStepPerEntry) {
    work.write("F/a", "a");
    work.write("F/sub/b", "b");
    work.write("F/sub/deeper/c", "c");
    work.write("F/other/d", "d");
    work.mkdir("F/sub/empty");
    Reports reports = run({work / "F"}, out / "n.zip");
    Reports expected{{Kind::Started}};
    for (std::int64_t step = 1; step <= 5; ++step)
        expected.push_back({Kind::Progress, step, 5});
    EXPECT_EQ(reports, expected);
    EXPECT_EQ(zipEntryNames(out / "n.zip").size(), 5u);
}

// Entries far enough behind the first that the workers cannot have reached them while its
// report is being made (they run a bounded number of entries ahead of the writer).
class CompressJobBehindTest : public CompressJobTest {
  protected:
    void SetUp() override {
        first = work.write("a.txt", "first");
        for (int index = 0; index < 1500; ++index)
            work.write("F/f" + std::to_string(index), "filler " + std::to_string(index));
        last = work.write("z.txt", "last");
    }
    std::string first, last;
};

TEST_F(CompressJobBehindTest, AFileThatVanishesBeforeItsWorkerReadsItFailsTheJob) {
    Reports reports = run({first, work / "F", last}, out / "v.zip", [&](const Report& report) {
        if (report.done == 1) std::filesystem::remove(last);
    });
    EXPECT_EQ(reports.back().kind, Kind::Failed);
    EXPECT_TRUE(treeOf(out.path()).empty());
}

TEST_F(CompressJobBehindTest, CancelWhileWorkersRunAheadStopsAndLeavesNothing) {
    Reports reports = run({first, work / "F", last}, out / "c.zip", [&](const Report& report) {
        if (report.done == 1) job->stopCompress();
    });
    EXPECT_EQ(reports.back().kind, Kind::Cancelled);
    EXPECT_EQ(reports.back().done, 1);
    EXPECT_EQ(reports.size(), 3u) << "no step after the cancel";
    EXPECT_TRUE(treeOf(out.path()).empty());
}

// As root the permission bits do not stop reads, so the job runs as an ordinary user.
TEST_F(CompressJobTest, AFolderThatCannotBeListedFailsTheJobRatherThanLosingIt) {
    work.write("F/open.txt", "o");
    work.write("F/closed/inside.txt", "i");
    ::chmod((work / "F").c_str(), 0755);
    ::chmod((work / "F/open.txt").c_str(), 0644);
    ::chmod((work / "F/closed").c_str(), 0);
    ::chmod(out.path().c_str(), 0777);
    const std::string archive = out / "u.zip";
    const bool failed = checkUnprivileged(work.path(), [&] {
        Reports reports = run({work / "F"}, archive);
        return reports.back().kind == Kind::Failed && !exists(archive);
    });
    ::chmod((work / "F/closed").c_str(), 0755);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(treeOf(out.path()).empty());
}

} // namespace
