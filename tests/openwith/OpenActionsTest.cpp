// Opening items with applications, services and common paths, against fakes of the desktop.
#include "actions/PXTools.h"
#include "platform/linux/GioApplications.h"
#include "support/Xdg.h"
#include "support_files/ActionsFixture.h"

#include <thread>

using namespace px;
using namespace px::test;
using Launch = platform::FakeApplications::Launch;
using ServiceRequest = platform::FakeServices::Request;
using Strings = std::vector<std::string>;

namespace {

class OpenActionsTest : public ActionsFixture {
  protected:
    void open(const std::string& app, std::optional<std::string> path = std::nullopt) {
        commands::openWithApp(sync.cx(), *appItem(app), path);
    }
    Session sync{*this};
};

TEST_F(OpenActionsTest, AFailedItemFallsBackToTheApplicationAloneAndAMissingOneIsReportedOnce) {
    std::string a = work.write("a.txt"), b = work.write("b.txt"), c = work.write("c.txt");
    apps->refuse("Viewer", {b});
    selectFor(sync, {a, b, c}, work.path(), true);
    open("Viewer");
    EXPECT_TRUE(ui->alerts().empty());
    open("Ghost");
    EXPECT_EQ(apps->launches(), (std::vector<Launch>{{"Viewer", {a}},
                                                     {"Viewer", {b}},
                                                     {"Viewer", {}},
                                                     {"Viewer", {c}},
                                                     {"Ghost", {a}},
                                                     {"Ghost", {}}}));
    EXPECT_EQ(alertTexts(), Strings{localized("Open Error Tip")});
}

TEST_F(OpenActionsTest, AGivenPathAProtectedFolderAndAnEntryWithoutApplication) {
    std::string home = xdg::homeDirectory(), folder = work.mkdir("common");
    selectFor(sync, {work.write("a.txt")}, work.path(), true);
    open("Viewer", folder);
    open(" \n");
    open("(null)");
    // The home folder behind the menu is not handed to applications, except to Warp.
    selectFor(sync, {}, home, false);
    open("Viewer");
    open("Warp");
    selectFor(sync, {home}, work.path(), true);
    open("Viewer");
    EXPECT_EQ(apps->launches(),
              (std::vector<Launch>{
                  {"Viewer", {folder}}, {"Viewer", {}}, {"Warp", {home}}, {"Viewer", {home}}}));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(OpenActionsTest, ServicesGetTheSelectionTheGivenFolderOrTheDesktopOnTheMainThreadOnly) {
    std::string a = work.write("a.txt"), b = work.mkdir("b");
    selectFor(sync, {a, b}, work.path(), true);
    commands::openService(sync.cx(), "New Terminal at Folder", std::nullopt);
    commands::openService(sync.cx(), "New iTerm2 Tab Here", b);
    selectFor(sync, {}, "/", false);
    commands::openService(sync.cx(), "New Terminal Tab at Folder", std::nullopt);
    bool answer = true;
    std::thread([&] {
        answer = PXTools::runService(*systemServices, "New Terminal at Folder", {a});
    }).join();
    EXPECT_FALSE(answer);
    EXPECT_EQ(systemServices->requests(),
              (std::vector<ServiceRequest>{
                  {"New Terminal at Folder", {a, b}},
                  {"New iTerm2 Tab Here", {b}},
                  {"New Terminal Tab at Folder", {xdg::userDirectory("DESKTOP")}}}));
}

TEST_F(OpenActionsTest, TheCommonPathEntryChosenDecidesWhatOpens) {
    std::string folder = work.mkdir("fav $(touch pwned)");
    std::string inner = work.write("fav $(touch pwned)/notes.txt");
    std::string file = work.write("report.pdf");
    auto terminal = PXMenuItem::create("Terminal Window");
    terminal->serve = "New Terminal at Folder";
    auto child = PXMenuItem::create(inner);
    child->path = inner;
    auto show = PXMenuItem::create("Show in Finder");

    for (const auto& item : {terminal, appItem("Viewer"), child, PXMenuItem::Ptr{},
                             PXMenuItem::create("More Files"), show})
        commands::openCommonPath(sync.cx(), folder, item.get());
    commands::openCommonPath(sync.cx(), file, show.get());
    EXPECT_EQ(systemServices->requests(),
              (std::vector<ServiceRequest>{{"New Terminal at Folder", {folder}}}));
    EXPECT_EQ(apps->launches(), (std::vector<Launch>{{"Viewer", {folder}}}));
    EXPECT_EQ(workspace->opened,
              (Strings{fileUrl(inner), fileUrl(folder), fileUrl(folder), fileUrl(folder)}));
    EXPECT_EQ(workspace->revealed, Strings{file});
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(OpenActionsTest, AVanishedOrRefusedCommonPathIsExplained) {
    commands::openCommonPath(sync.cx(), work / "gone", nullptr);
    EXPECT_TRUE(workspace->opened.empty());
    std::string folder = work.mkdir("fav");
    workspace->answer = false;
    ui->answers({"button 1000", "button 1001"});
    commands::openCommonPath(sync.cx(), folder, nullptr);
    ASSERT_EQ(ui->alerts().size(), 2u);
    EXPECT_EQ(ui->alerts()[0].informative, localized("Common Path Not Exist Tip"));
    EXPECT_NE(ui->alerts()[1].informative.find(folder), std::string::npos);
}

TEST(DesktopIds, NamesSuggestTheirDesktopFilesAndPathsSuggestNothing) {
    EXPECT_EQ(platform::desktopIdCandidates("GIMP"), (Strings{"GIMP.desktop", "gimp.desktop"}));
    for (const char* name : {"", "   ", "../../etc/passwd"})
        EXPECT_TRUE(platform::desktopIdCandidates(name).empty()) << name;
}

} // namespace
