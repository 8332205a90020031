#include "extension/PXCheckPermit.h"

#include "PermitTestSupport.h"
#include "support/AccessDescription.h"
#include "support/Localization.h"

namespace px {
namespace {

class CheckPermitTest : public test::PermitTest {
  protected:
    // Runs the action check and answers which block ran: "success", "failure" or "".
    std::string actionCheck(const std::string& path) {
        std::string ran;
        permits().checkPermitWithPath(
            path, [&] { ran += "success"; }, [&] { ran += "failure"; });
        return ran;
    }
    std::vector<std::string> granted() { return cache().availablePaths(); }
};

TEST_F(CheckPermitTest, TheSilentCheckPassesForWhatTheProcessMayReadAndList) {
    std::string open = folder("open"), closed = folder("closed", 0);
    std::string listOnly = folder("readable-not-listable", 0444);
    std::string file = scratch.write("open/file.txt", "x");
    std::string closedFile = scratch.write("secret.txt", "x");
    ::chmod(closedFile.c_str(), 0);
    EXPECT_FALSE(permits().checkPermitWithPath(" \n"));
    EXPECT_EQ(actionCheck(""), "");
    EXPECT_TRUE(test::checkUnprivileged(scratch.path(), [&] {
        REQUIRE(permits().checkPermitWithPath(open));
        REQUIRE(permits().checkPermitWithPath(file));
        for (const auto& refused : {closed, closedFile, listOnly, scratch / "missing"})
            REQUIRE(!permits().checkPermitWithPath(refused));
        cache().saveSecurityURL(closed);
        REQUIRE(permits().checkPermitWithPath(closed + "/inside"));
        return true;
    }));
}

TEST_F(CheckPermitTest, AGrantOrTheRightToWriteNeedsNoPrompt) {
    std::string writable = folder("writable", 0777), grantedFolder = folder("granted", 0555);
    cache().saveSecurityURL(grantedFolder);
    EXPECT_TRUE(test::checkUnprivileged(scratch.path(), [&] {
        REQUIRE(actionCheck(writable) == "success");
        REQUIRE(actionCheck(grantedFolder + "/new") == "success");
        REQUIRE(ui->alerts().empty() && ui->opens().empty());
        return true;
    }));
}

TEST_F(CheckPermitTest, AnUnwritableFolderShowsTheGuidanceThenGrantsTheChosenFolder) {
    std::string target = folder("target", 0555), chosen = folder("chosen");
    ui->answers({"button 1000", "open " + chosen});
    EXPECT_TRUE(test::checkUnprivileged(scratch.path(), [&] {
        REQUIRE(actionCheck(target) == "success");
        REQUIRE(ui->alerts().size() == 1);
        const auto& alert = ui->alerts().front();
        REQUIRE(alert.informative.starts_with(localized("Auth Full Disk Access Tip")));
        REQUIRE(alert.informative.ends_with(describeAccess(target)));
        REQUIRE(alert.buttons ==
                (std::vector<std::string>{localized("Authorization"), localized("Cancel")}));
        REQUIRE(ui->opens().size() == 1);
        const auto& panel = ui->opens().front();
        REQUIRE(panel.directory == "/" && panel.message == localized("Auth Root Tip"));
        REQUIRE(panel.chooseDirectories && !panel.chooseFiles);
        // The chosen folder is granted even though it does not cover the target.
        REQUIRE(granted() == std::vector<std::string>{chosen});
        REQUIRE(actionCheck(chosen + "/x") == "success" && ui->alerts().size() == 1);
        return true;
    }));
}

TEST_F(CheckPermitTest, DecliningTheGuidanceOrThePanelRunsFailure) {
    std::string target = folder("target", 0555);
    ui->answers({"button 1001", "button 1000", "cancel"});
    EXPECT_TRUE(test::checkUnprivileged(scratch.path(), [&] {
        REQUIRE(actionCheck(target) == "failure");
        REQUIRE(ui->opens().empty());
        REQUIRE(actionCheck(target) == "failure"); // guidance accepted, panel cancelled
        REQUIRE(ui->opens().size() == 1);
        REQUIRE(granted().empty());
        return true;
    }));
}

TEST_F(CheckPermitTest, APathInTheHomeFolderStartsThePanelThereWithoutTheRootTip) {
    ui->answers({"button 1000", "cancel"});
    EXPECT_EQ(actionCheck(xdg.home() + "/Documents/report.txt"), "failure");
    ASSERT_EQ(ui->opens().size(), 1u);
    EXPECT_EQ(ui->opens().front().directory, xdg.home());
    EXPECT_EQ(ui->opens().front().message, "");
}

} // namespace
} // namespace px
