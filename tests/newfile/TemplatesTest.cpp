// Templates the user adds: from a selected item, from ~/Templates, and through the save panel.
#include "NewFileFixture.h"
#include "extension/UserTemplates.h"

#include <fmt/format.h>
#include <fstream>
#include <sys/stat.h>

using namespace px;
using namespace px::test;
using Names = std::vector<std::string>;

namespace {

class TemplatesTest : public NewFileFixture {
  protected:
    void addToTemplate(const std::string& path) {
        create(PXMenuItem::create("Add to File Template"), {path});
    }
    void fromWindow(std::initializer_list<std::string_view> answers) {
        ui->answers(answers);
        createIn(PXMenuItem::create("New File From Window"));
    }
    // The chooser's answer for the entry with the key.
    std::string choose(const std::string& key) {
        auto all = store->newFileTemplateMenuArray(true);
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i]->key == key) return "choose " + std::to_string(i);
        ADD_FAILURE() << key;
        return "choose 0";
    }
};

TEST_F(TemplatesTest, AnImageIsItsOwnIconDrawnCentredInto60By60) {
    const std::string image = work / "wide.png";
    ASSERT_EQ(runProcess({"convert", "-size", "40x20", "xc:#FF0000", image}).exitStatus, 0);
    addToTemplate(image);
    auto entry = store->newFileTemplateMenuArray(true).back();
    const std::string icon = entry->iconPath;
    EXPECT_EQ(icon, entry->templatePath + ".png");
    EXPECT_EQ(runProcess({"identify", "-format", "%wx%h", icon}).out, "60x60");
}

TEST_F(TemplatesTest, AFolderIsCopiedWholeEachTime) {
    work.write("Site/index.html", "<p>hi</p>");
    work.write("Site/css/site.css", "p{}");
    work.mkdir("Site/empty");
    std::filesystem::create_symlink("css/site.css", work / "Site/link");
    addToTemplate(work / "Site");
    auto item = store->newFileTemplateMenuArray(true).back();
    EXPECT_EQ(item->ext, "");
    EXPECT_EQ(item->displayName, "Site");
    TempDir target;
    create(item, {target.path()});
    ui->answer("button 1000");
    create(item, {target.path()});
    EXPECT_EQ(listing(target.path()), (Names{"Untitled", "Untitled-1"}));
    EXPECT_EQ(readFile(target / "Untitled-1/css/site.css"), "p{}");
    EXPECT_EQ(readFile(target / "Untitled/index.html"), "<p>hi</p>");
    EXPECT_TRUE(std::filesystem::is_directory(target / "Untitled/empty"));
    EXPECT_EQ(std::filesystem::read_symlink(target / "Untitled/link"), "css/site.css");
}

TEST_F(TemplatesTest, AnUncopyableItemAddsNothing) {
    const std::size_t before = store->newFileTemplateMenuArray(true).size();
    ASSERT_EQ(::mkfifo((work / "pipe").c_str(), 0600), 0);
    addToTemplate(work / "pipe");
    addToTemplate(work / "vanished.txt");
    EXPECT_EQ(store->newFileTemplateMenuArray(true).size(), before);
    EXPECT_EQ(alertTexts(), Names(2, localized("Error Common Tip")));
    EXPECT_TRUE(listing(data.path() + "/PXFileTemplate").empty());
}

TEST_F(TemplatesTest, UserTemplatesAreTheVisibleFilesSortedAtMostFifty) {
    TempDir folder;
    for (const char* name : {"b.odt", "Letter.v2.docx", ".hidden.txt", "old.txt~", "sub/inner.txt",
                             "New File From Window"})
        folder.write(name, name);
    std::filesystem::create_symlink(folder / "b.odt", folder / "link.odt");
    std::filesystem::create_symlink(folder / "sub", folder / "linkdir");
    std::filesystem::create_symlink(folder / "nowhere", folder / "dangling.txt");
    auto items = UserTemplates::items(folder.path());
    Names keys;
    for (const auto& item : items)
        keys.push_back(item->key);
    EXPECT_EQ(keys, (Names{"Letter.v2.docx", "b.odt", "link.odt"}));
    EXPECT_EQ(items.front()->fileName + "." + items.front()->ext, "Letter.v2.docx");

    for (int i = 0; i < 70; ++i)
        folder.write(fmt::format("t{:02}.txt", i));
    ASSERT_EQ(UserTemplates::items(folder.path()).size(), 50u);
    EXPECT_EQ(UserTemplates::items(folder.path()).back()->key, "t46.txt");
    EXPECT_EQ(UserTemplates::folder(), xdg.home() + "/Templates");
    std::filesystem::create_directories(xdg.configHome());
    std::ofstream(xdg.configHome() + "/user-dirs.dirs") << "XDG_TEMPLATES_DIR=\"$HOME/\"\n";
    EXPECT_EQ(UserTemplates::folder(), "") << "never the home folder itself";
}

TEST_F(TemplatesTest, TheSavePanelTakesTheChosenTypeAndAsksBeforeReplacingWhatItDidNotConfirm) {
    fromWindow({"save Sheet.XLSX", choose("xlsx")}); // a name with the extension keeps it
    EXPECT_EQ(readFile(work / "Sheet.XLSX"),
              readFile(std::string(PX_SOURCE_DIR) + "/data/templates/Untitled.xlsx"));

    work.write("Draft.txt", "old");
    work.write("Notes.txt", "old");
    fromWindow({choose("txt"), "save " + work / "Draft.txt"}); // confirmed in the panel
    EXPECT_EQ(readFile(work / "Draft.txt"), "");
    EXPECT_TRUE(ui->alerts().empty());
    fromWindow({choose("txt"), "save Notes", "button 1000"}); // Notes.txt was never confirmed
    EXPECT_EQ(readFile(work / "Notes.txt"), "old");
    EXPECT_TRUE(exists(work / "Notes-1.txt"));
    EXPECT_EQ(ui->alerts().size(), 1u);
}

} // namespace
