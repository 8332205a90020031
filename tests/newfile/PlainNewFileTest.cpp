#include "NewFileFixture.h"

#include <sys/stat.h>

using namespace px;
using namespace px::test;
using Names = std::vector<std::string>;

namespace {

class PlainNewFileTest : public NewFileFixture {};

TEST_F(PlainNewFileTest, ReplaceSwapsAFolderForTheNewFileButNeverTheTemplateItself) {
    work.write("Untitled.json/inner/deep.txt", "x");
    ui->answer("button 1002");
    createIn(templateItem("json"));
    EXPECT_TRUE(std::filesystem::is_regular_file(work / "Untitled.json"));

    auto self = itemWith("notes", "txt", work.write("notes.txt", "precious"));
    self->fileName = "notes";
    auto holder = itemWith("inner", "txt", work.write("box/inner.txt", "inside"));
    holder->fileName = "box";
    holder->isSpecialFile = true;
    ui->answers({"button 1002", "button 1002"});
    createIn(self);
    createIn(holder);
    EXPECT_EQ(readFile(work / "notes.txt"), "precious");
    EXPECT_EQ(readFile(work / "box/inner.txt"), "inside");
    EXPECT_EQ(listing(work.path()), (Names{"Untitled.json", "box", "notes.txt"}));
    EXPECT_EQ(alertTexts().back(), localized("Error Common Tip"));
}

TEST_F(PlainNewFileTest, NamesExtensionsAndTheTargetFolder) {
    auto makefile = itemWith("Makefile", "");
    makefile->fileName = "Makefile";
    makefile->isSpecialFile = true;
    auto blankName = itemWith("md", "md");
    blankName->fileName = "  ";
    auto odd = itemWith("sh", "sh");
    odd->fileName = "a\"b $(touch pwned) `id` ; rm -rf x";
    for (const auto& item : {makefile, blankName, odd})
        createIn(item);
    EXPECT_EQ(listing(work.path()), (Names{"Makefile", "Untitled.md", odd->fileName + ".sh"}));

    // A selected file: the new file goes beside it. No selection: the home folder.
    create(templateItem("json"), {work.write("sub/notes.txt", "n")});
    EXPECT_TRUE(exists(work / "sub/Untitled.json"));
    create(templateItem("json"), {});
    EXPECT_TRUE(exists(xdg.home() + "/Untitled.json"));
}

TEST_F(PlainNewFileTest, BuiltInExtensionsCopyTheShippedBlankOthersAreEmpty) {
    createIn(templateItem("docx"));
    EXPECT_EQ(readFile(work / "Untitled.docx"), "");
    struct stat info {};
    ASSERT_EQ(::stat((work / "Untitled.docx").c_str(), &info), 0);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(info.st_mode & 0777, 0666 & ~mask);
}

TEST_F(PlainNewFileTest, UnusableTemplatesAndFoldersGiveAnAlertAndLeaveNothing) {
    ASSERT_EQ(::mkfifo((work / "pipe").c_str(), 0600), 0);
    createIn(itemWith("pipe", "txt", work / "pipe"));
    createIn(itemWith("gone", "txt", work / "vanished.txt"));
    create(templateItem("txt"), {work / "missing/folder.txt"});
    EXPECT_EQ(listing(work.path()), Names{"pipe"});
    EXPECT_EQ(alertTexts(), Names(3, localized("Error Common Tip")));
}

TEST_F(PlainNewFileTest, OpenNewFileOpensItsAddressOnlyWhenAsked) {
    createIn(templateItem("txt"));
    EXPECT_TRUE(workspace->opened.empty());
    suite->setBool("open new file", true);
    auto spaced = itemWith("md", "md");
    spaced->fileName = "my notes #1";
    createIn(spaced);
    EXPECT_EQ(workspace->opened, Names{"file://" + work.path() + "/my%20notes%20%231.md"});
}

} // namespace
