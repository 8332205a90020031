#include "ActionsFixture.h"

using namespace px;
using namespace px::test;

namespace {

class CommonPathTest : public ActionsFixture {
  protected:
    static PXMenuItem::Ptr entry(const std::string& key) { return PXMenuItem::create(key); }
    FinderSync sync;
};

TEST_F(CommonPathTest, AVanishedPathIsReported) {
    sync.openCommonPath(work / "gone", nullptr);
    EXPECT_EQ(alertTexts(), (std::vector<std::string>{localized("Common Path Not Exist Tip")}));
    EXPECT_TRUE(workspace->opened.empty());
}

TEST_F(CommonPathTest, TheChosenEntryDecidesWhatOpens) {
    std::string folder = work.mkdir("fav $(touch pwned)");
    std::string inner = work.write("fav $(touch pwned)/notes.txt");
    auto terminal = entry("Terminal Window");
    terminal->serve = "New Terminal at Folder";
    auto app = entry("Viewer");
    app->appName = "Viewer";
    auto child = entry(inner);
    child->path = inner;

    sync.openCommonPath(folder, terminal);
    sync.openCommonPath(folder, app);
    sync.openCommonPath(folder, child);
    sync.openCommonPath(folder, nullptr);
    sync.openCommonPath(folder, entry("More Files"));
    EXPECT_EQ(services->requests(),
              (std::vector<platform::FakeServices::Request>{{"New Terminal at Folder", {folder}}}));
    EXPECT_EQ(apps->launches(),
              (std::vector<platform::FakeApplications::Launch>{{"Viewer", {folder}}}));
    EXPECT_EQ(workspace->opened,
              (std::vector<std::string>{fileUrl(inner), fileUrl(folder), fileUrl(folder)}));
    EXPECT_TRUE(ui->alerts().empty());
    EXPECT_FALSE(exists(work / "pwned"));
}

TEST_F(CommonPathTest, ShowInFileManagerOpensAFolderAndRevealsAFile) {
    std::string folder = work.mkdir("fav");
    std::string file = work.write("report.pdf");
    sync.openCommonPath(folder, entry("Show in Finder"));
    sync.openCommonPath(file, entry("Show in Finder"));
    EXPECT_EQ(workspace->opened, (std::vector<std::string>{fileUrl(folder)}));
    EXPECT_EQ(workspace->revealed, (std::vector<std::string>{file}));
}

TEST_F(CommonPathTest, ARefusedOpenExplainsHowToGrantAccess) {
    std::string folder = work.mkdir("fav");
    workspace->answer = false;
    ui->answer("button 1001");
    sync.openCommonPath(folder, nullptr);
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_NE(ui->alerts()[0].informative.find(folder), std::string::npos)
        << ui->alerts()[0].informative;
    EXPECT_EQ(workspace->opened, (std::vector<std::string>{fileUrl(folder)}));
}

} // namespace
