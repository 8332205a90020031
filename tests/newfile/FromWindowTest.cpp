#include "NewFileFixture.h"
#include "config/Localization.h"

using namespace px;
using namespace px::test;

namespace {

class FromWindowTest : public NewFileFixture {
  protected:
    void fromWindow() { createIn(PXMenuItem::create("New File From Window")); }
    // The index of the factory entry with the key in the chooser's list.
    static std::size_t indexOf(const std::string& key) {
        auto all = PXMenuManager::newFileTemplateMenuArray(true);
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i]->key == key) return i;
        ADD_FAILURE() << key;
        return 0;
    }
};

TEST_F(FromWindowTest, ThePanelStartsInTheTargetFolderWithTheChooser) {
    ui->answer("cancel");
    fromWindow();
    ASSERT_EQ(ui->saves().size(), 1u);
    const auto& request = ui->saves().front();
    EXPECT_EQ(request.directory, work.path());
    EXPECT_EQ(request.name, localized("Untitled"));
    ASSERT_FALSE(request.offeredTypeIndexes.empty());
    for (auto index : request.offeredTypeIndexes) {
        EXPECT_FALSE(request.fileTypes[index]->isNewFileFromWindow());
        EXPECT_FALSE(request.fileTypes[index]->isSpecialFile);
    }
    EXPECT_TRUE(names(work.path()).empty());
}

TEST_F(FromWindowTest, TheChosenTypeGivesTheExtensionAndTheBlankDocument) {
    const auto xlsx = std::to_string(indexOf("xlsx"));
    ui->answers({"choose " + xlsx, "save Budget"});
    fromWindow();
    // The first offered type when none is chosen; a name that has the extension keeps it.
    ui->answers({"save plain"});
    fromWindow();
    ui->answers({"save Sheet.XLSX", "choose " + xlsx});
    fromWindow();
    const std::string firstExt = PXMenuManager::newFileTemplateMenuArray(true)[1]->ext;
    EXPECT_EQ(names(work.path()),
              (std::vector<std::string>{"Budget.xlsx", "Sheet.XLSX", "plain." + firstExt}));
    EXPECT_EQ(readFile(work / "Budget.xlsx"),
              readFile(std::string(PX_SOURCE_DIR) + "/data/templates/Untitled.xlsx"));
    EXPECT_TRUE(ui->alerts().empty());
}

TEST_F(FromWindowTest, ThePanelsOwnAnswerReplacesAnAppendedExtensionAsks) {
    work.write("Draft.txt", "old");
    work.write("Notes.txt", "old");
    const auto txt = std::to_string(indexOf("txt"));
    ui->answers({"choose " + txt, "save " + work / "Draft.txt"});
    fromWindow();
    EXPECT_EQ(std::filesystem::file_size(work / "Draft.txt"), 0u);
    EXPECT_TRUE(ui->alerts().empty());
    // "Notes" becomes Notes.txt, which the panel never confirmed: the collision prompt asks.
    ui->answers({"choose " + txt, "save Notes", "button 1000"});
    fromWindow();
    EXPECT_EQ(names(work.path()),
              (std::vector<std::string>{"Draft.txt", "Notes-1.txt", "Notes.txt"}));
    EXPECT_EQ(readFile(work / "Notes.txt"), "old");
    EXPECT_EQ(ui->alerts().size(), 1u);
}

TEST_F(FromWindowTest, AChosenTemplateEntryIsCopied) {
    TempDir store;
    PXMenuManager::addMenuKey(
        menukey::kNewFile,
        plist::Value::makeDictionary({{"key", plist::Value("K1")},
                                      {"ext", plist::Value("cfg")},
                                      {"displayName", plist::Value("Config")},
                                      {"templatePath", plist::Value(store.write("c", "x=1"))}}),
        false);
    ui->answers({"choose " + std::to_string(indexOf("K1")), "save app"});
    fromWindow();
    EXPECT_EQ(readFile(work / "app.cfg"), "x=1");

    // Without an extension the answered name is used as it is; a folder there is not
    // replaced without asking.
    PXMenuManager::addMenuKey(
        menukey::kNewFile,
        plist::Value::makeDictionary({{"key", plist::Value("K2")},
                                      {"templatePath", plist::Value(store.write("rc", "set -e"))}}),
        false);
    work.write("Folder/keep.txt", "k");
    ui->answers({"choose " + std::to_string(indexOf("K2")), "save Folder", "button 1001"});
    fromWindow();
    EXPECT_EQ(readFile(work / "Folder/keep.txt"), "k");
    ASSERT_EQ(ui->alerts().size(), 1u);
    ui->answers({"choose " + std::to_string(indexOf("K2")), "save .bashrc"});
    fromWindow();
    EXPECT_EQ(readFile(work / ".bashrc"), "set -e");
}

} // namespace
