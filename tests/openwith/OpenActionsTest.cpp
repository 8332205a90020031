#include "ActionsFixture.h"
#include "actions/PXTools.h"
#include "support/Xdg.h"

#include <thread>

using namespace px;
using namespace px::test;
using Launch = platform::FakeApplications::Launch;
using Request = platform::FakeServices::Request;

namespace {

class OpenWithAppTest : public ActionsFixture {
  protected:
    FinderSync sync;
};

TEST_F(OpenWithAppTest, EachSelectedItemIsOpenedOnItsOwnInOrder) {
    std::string a = work.write("a.txt"), b = work.write("b.txt"), c = work.write("$(touch pwned)");
    selectFor(sync, {a, b, c}, work.path(), true);
    sync.openWithApp(appItem("Viewer"), std::nullopt);
    EXPECT_EQ(apps->launches(),
              (std::vector<Launch>{{"Viewer", {a}}, {"Viewer", {b}}, {"Viewer", {c}}}));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(OpenWithAppTest, AFailedItemFallsBackToTheApplicationAlone) {
    std::string a = work.write("a.txt"), b = work.write("b.txt"), c = work.write("c.txt");
    apps->refuse("Viewer", {b});
    selectFor(sync, {a, b, c}, work.path(), true);
    sync.openWithApp(appItem("Viewer"), std::nullopt);
    EXPECT_EQ(
        apps->launches(),
        (std::vector<Launch>{{"Viewer", {a}}, {"Viewer", {b}}, {"Viewer", {}}, {"Viewer", {c}}}));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(OpenWithAppTest, AMissingApplicationIsReportedOnceAndTheRestIsLeftAlone) {
    std::string a = work.write("a.txt"), b = work.write("b.txt");
    selectFor(sync, {a, b}, work.path(), true);
    sync.openWithApp(appItem("Ghost"), std::nullopt);
    EXPECT_EQ(apps->launches(), (std::vector<Launch>{{"Ghost", {a}}, {"Ghost", {}}}));
    EXPECT_EQ(alertTexts(), (std::vector<std::string>{localized("Open Error Tip")}));
}

TEST_F(OpenWithAppTest, AProtectedFolderBehindTheMenuIsDroppedExceptForWarp) {
    std::string home = xdg::homeDirectory();
    selectFor(sync, {}, home, false);
    sync.openWithApp(appItem("Viewer"), std::nullopt);
    sync.openWithApp(appItem("Warp"), std::nullopt);
    selectFor(sync, {home}, work.path(), true);
    sync.openWithApp(appItem("Viewer"), std::nullopt);
    EXPECT_EQ(apps->launches(),
              (std::vector<Launch>{{"Viewer", {}}, {"Warp", {home}}, {"Viewer", {home}}}));
}

TEST_F(OpenWithAppTest, AGivenPathIsOpenedInsteadOfTheSelection) {
    std::string a = work.write("a.txt");
    std::string folder = work.mkdir("common");
    selectFor(sync, {a}, work.path(), true);
    sync.openWithApp(appItem("Viewer"), folder);
    sync.openWithApp(appItem("Ghost"), folder);
    EXPECT_EQ(apps->launches(),
              (std::vector<Launch>{{"Viewer", {folder}}, {"Ghost", {folder}}, {"Ghost", {}}}));
    EXPECT_EQ(alertTexts(), (std::vector<std::string>{localized("Open Error Tip")}));
}

TEST_F(OpenWithAppTest, AnEntryWithoutApplicationDoesNothing) {
    selectFor(sync, {work.write("a.txt")}, work.path(), true);
    sync.openWithApp(appItem(" \n"), std::nullopt);
    sync.openWithApp(appItem("(null)"), std::nullopt);
    sync.openWithApp(nullptr, std::nullopt);
    EXPECT_TRUE(apps->launches().empty());
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(OpenWithAppTest, ServicesGetTheSelectionTheGivenFolderOrTheDesktop) {
    std::string a = work.write("a.txt"), b = work.mkdir("b");
    selectFor(sync, {a, b}, work.path(), true);
    sync.openServe("New Terminal at Folder", std::nullopt);
    sync.openServe("New iTerm2 Tab Here", b);
    selectFor(sync, {}, "/", false);
    sync.openServe("New Terminal Tab at Folder", std::nullopt);
    EXPECT_EQ(services->requests(), (std::vector<Request>{{"New Terminal at Folder", {a, b}},
                                                          {"New iTerm2 Tab Here", {b}},
                                                          {"New Terminal Tab at Folder",
                                                           {xdg::userDirectory("DESKTOP")}}}));
}

TEST_F(OpenWithAppTest, ServicesAreRefusedOffTheMainThread) {
    bool answer = true;
    std::thread([&] {
        answer = PXTools::runService("New Terminal at Folder", {work.path()});
    }).join();
    EXPECT_FALSE(answer);
    EXPECT_TRUE(services->requests().empty());
    EXPECT_TRUE(PXTools::runService("New Terminal at Folder", {work.path()}));
}

TEST_F(OpenWithAppTest, CopyPathPutsOneLinePerItemWithoutAFinalLineFeed) {
    std::string a = work.write("a b.txt"), b = work.write("x\"; touch y; \".txt");
    selectFor(sync, {a, b}, work.path(), true);
    sync.copyPath();
    selectFor(sync, {}, "/", false);
    sync.copyPath();
    EXPECT_EQ(pasteboard->writes(), (std::vector<std::string>{a + "\n" + b, ""}));
    EXPECT_EQ(pasteboard->clearCount(), 2u);
    EXPECT_TRUE(ui->alerts().empty());
}

} // namespace
