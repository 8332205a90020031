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

using Report = std::pair<std::int64_t, std::int64_t>;
using Reports = std::vector<Report>;

class CompressJobTest : public ::testing::Test {
  protected:
    // Runs the worker on this thread; `onReport` sees every report as it is made.
    Reports run(const std::vector<std::string>& paths, const std::string& archive,
                std::function<void(const Report&)> onReport = {}) {
        Reports reports;
        job->savePath = archive;
        job->startCompressWithPaths(paths, std::string("pw"), [&](std::int64_t d, std::int64_t t) {
            reports.emplace_back(d, t);
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

TEST_F(CompressJobTest, ReportsCountItemsAndTheLastWaitsForTheArchive) {
    const std::string a = work.write("a.txt", "a");
    work.write("F/sub/y", "y"); // F/sub has contents, so only F/sub/y is an entry
    const std::string archive = out / "r.zip";
    bool completeAtLastReport = false;
    Reports reports = run({a, work / "F"}, archive, [&](const Report& report) {
        if (report.first == report.second && report.second > 0)
            completeAtLastReport = !zipEntryNames(archive).empty();
    });
    EXPECT_EQ(reports, (Reports{{0, 0}, {1, 3}, {3, 3}}));
    EXPECT_TRUE(completeAtLastReport);
}

TEST_F(CompressJobTest, AFileThatVanishesWhileWritingFailsTheJob) {
    const std::string a = work.write("a.txt", "a"), b = work.write("b.txt", "b");
    Reports reports = run({a, b}, out / "v.zip", [&](const Report& report) {
        if (report == Report{1, 2}) std::filesystem::remove(b);
    });
    EXPECT_EQ(reports.back(), (Report{1, PXCompress::kFailed}));
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
        return reports.back().second == PXCompress::kFailed && !exists(archive);
    });
    ::chmod((work / "F/closed").c_str(), 0755);
    EXPECT_TRUE(failed);
    EXPECT_TRUE(treeOf(out.path()).empty());
}

} // namespace
