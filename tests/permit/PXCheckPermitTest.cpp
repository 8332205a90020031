#include "support/PXCheckPermit.h"

#include "PermitTestSupport.h"
#include "config/Localization.h"
#include "support/AccessDescription.h"
#include "support/PXURLCache.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px {
namespace {

using test::PermitTest;

class CheckPermitTest : public PermitTest {
  protected:
    // Runs the action check and answers which block ran: "success", "failure" or "".
    static std::string actionCheck(const std::string& path) {
        std::string ran;
        PXCheckPermit::checkPermitWithPath(
            path, [&] { ran += "success"; }, [&] { ran += "failure"; });
        return ran;
    }
    std::string lockedFolder(const std::string& name, mode_t mode) {
        std::string path = folder(name);
        ::chmod(path.c_str(), mode);
        return path;
    }
};

TEST_F(CheckPermitTest, TheSilentCheckPassesForWhatTheProcessMayReadAndList) {
    std::string open = folder("open");
    std::string file = scratch.write("open/file.txt", "x");
    std::string closed = lockedFolder("closed", 0);
    std::string closedFile = scratch.write("secret.txt", "x");
    ::chmod(closedFile.c_str(), 0);
    std::string listOnly = lockedFolder("readable-not-listable", 0444);
    EXPECT_UNPRIVILEGED(scratch.path(), [&] {
        REQUIRE(PXCheckPermit::checkPermitWithPath(open));
        REQUIRE(PXCheckPermit::checkPermitWithPath(file));
        REQUIRE(!PXCheckPermit::checkPermitWithPath(closed));
        REQUIRE(!PXCheckPermit::checkPermitWithPath(closedFile));
        REQUIRE(!PXCheckPermit::checkPermitWithPath(listOnly));
        REQUIRE(!PXCheckPermit::checkPermitWithPath(scratch / "missing"));
        PXURLCache::sharedInstance().saveSecurityURL(closed);
        REQUIRE(PXCheckPermit::checkPermitWithPath(closed + "/inside"));
        return true;
    });
}

TEST_F(CheckPermitTest, BlankPathsPassNothingAndRunNothing) {
    EXPECT_FALSE(PXCheckPermit::checkPermitWithPath(""));
    EXPECT_FALSE(PXCheckPermit::checkPermitWithPath(" \n"));
    EXPECT_EQ(actionCheck(""), "");
    EXPECT_TRUE(ui->alerts.empty());
}

TEST_F(CheckPermitTest, AGrantOrTheRightToWriteNeedsNoPrompt) {
    std::string writable = lockedFolder("writable", 0777);
    std::string granted = lockedFolder("granted", 0555);
    PXURLCache::sharedInstance().saveSecurityURL(granted);
    EXPECT_UNPRIVILEGED(scratch.path(), [&] {
        REQUIRE(actionCheck(writable) == "success");
        REQUIRE(actionCheck(granted + "/new") == "success");
        REQUIRE(ui->alerts.empty() && ui->openRequests.empty());
        return true;
    });
}

TEST_F(CheckPermitTest, AnUnwritableFolderShowsTheGuidanceThenGrantsTheChosenFolder) {
    std::string target = lockedFolder("target", 0555);
    std::string chosen = folder("chosen");
    ui->alertAnswers = {1000};
    ui->openAnswers = {chosen};
    EXPECT_UNPRIVILEGED(scratch.path(), [&] {
        REQUIRE(actionCheck(target) == "success");
        REQUIRE(ui->alerts.size() == 1);
        const auto& alert = ui->alerts.front();
        REQUIRE(alert.message == localized("Tip"));
        REQUIRE(alert.informative.starts_with(localized("Auth Full Disk Access Tip")));
        REQUIRE(alert.informative.ends_with(describeAccess(target)));
        REQUIRE(alert.buttons ==
                (std::vector<std::string>{localized("Authorization"), localized("Cancel")}));
        REQUIRE(ui->openRequests.size() == 1);
        const auto& panel = ui->openRequests.front();
        REQUIRE(panel.directory == "/" && panel.message == localized("Auth Root Tip"));
        REQUIRE(panel.button == localized("Authorization"));
        REQUIRE(panel.chooseDirectories && !panel.chooseFiles);
        // The chosen folder is granted even though it does not cover the target.
        REQUIRE(PXURLCache::sharedInstance().availablePaths() == std::vector<std::string>{chosen});
        REQUIRE(actionCheck(chosen + "/x") == "success" && ui->alerts.size() == 1);
        return true;
    });
}

TEST_F(CheckPermitTest, DecliningTheGuidanceOrThePanelRunsFailure) {
    std::string target = lockedFolder("target", 0555);
    ui->alertAnswers = {1001, 1000};
    EXPECT_UNPRIVILEGED(scratch.path(), [&] {
        REQUIRE(actionCheck(target) == "failure");
        REQUIRE(ui->openRequests.empty());
        REQUIRE(actionCheck(target) == "failure"); // guidance accepted, panel cancelled
        REQUIRE(ui->openRequests.size() == 1);
        REQUIRE(PXURLCache::sharedInstance().availablePaths().empty());
        return true;
    });
}

TEST_F(CheckPermitTest, APathInTheHomeFolderStartsThePanelThereWithoutTheRootTip) {
    std::string inHome = xdg.home() + "/Documents/report.txt";
    ui->alertAnswers = {1000};
    EXPECT_EQ(actionCheck(inHome), "failure"); // missing, so not writable even for root
    ASSERT_EQ(ui->openRequests.size(), 1u);
    EXPECT_EQ(ui->openRequests.front().directory, xdg.home());
    EXPECT_EQ(ui->openRequests.front().message, "");
}

TEST_F(CheckPermitTest, AStaleGrantAsksAgain) {
    std::string gone = folder("gone");
    PXURLCache::sharedInstance().saveSecurityURL(gone);
    PXURLCache::resetForTesting(); // a later process
    std::filesystem::remove(gone);
    EXPECT_EQ(actionCheck(gone + "/file"), "failure");
    EXPECT_EQ(ui->alerts.size(), 1u);
    EXPECT_FALSE(PXCheckPermit::checkPermitWithPath(gone));
}

TEST_F(CheckPermitTest, SelectingAFolderReturnsTheChoiceWithoutSavingIt) {
    ui->openAnswers = {"/srv", std::nullopt};
    EXPECT_EQ(PXCheckPermit::selectFolderWithPrompt("Pick"), "/srv");
    EXPECT_EQ(PXCheckPermit::selectFolderWithPrompt("Pick"), std::nullopt);
    ASSERT_EQ(ui->openRequests.size(), 2u);
    EXPECT_EQ(ui->openRequests.front().button, "Pick");
    EXPECT_FALSE(ui->openRequests.front().chooseFiles);
    EXPECT_TRUE(PXURLCache::sharedInstance().availablePaths().empty());
}

} // namespace
} // namespace px
