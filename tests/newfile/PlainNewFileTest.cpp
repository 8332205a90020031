#include "NewFileFixture.h"
#include "actions/NewFile.h"
#include "config/Localization.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

class PlainNewFileTest : public NewFileFixture {};

std::uintmax_t sizeOf(const std::string& path) {
    return std::filesystem::file_size(path);
}

TEST_F(PlainNewFileTest, CollisionsAskAndKeepBothNumbersTheNames) {
    auto txt = templateItem("txt");
    createIn(txt);
    EXPECT_TRUE(ui->alerts().empty());
    ui->answers({"button 1000", "button 1000"});
    createIn(txt);
    createIn(txt);
    EXPECT_EQ(names(work.path()),
              (std::vector<std::string>{"Untitled-1.txt", "Untitled-2.txt", "Untitled.txt"}));
    ASSERT_EQ(ui->alerts().size(), 2u);
    const auto& prompt = ui->alerts().front();
    EXPECT_EQ(prompt.buttons, (std::vector<std::string>{localized("Keep Both"), localized("Stop"),
                                                        localized("Replace")}));
    EXPECT_EQ(prompt.informative, localizedFormat("Same FileName Tip", "Untitled.txt"));
    EXPECT_EQ(ui->remainingAnswers(), 0u);
}

TEST_F(PlainNewFileTest, StopLeavesTheFolderAsItWas) {
    work.write("Untitled.txt", "keep me");
    ui->answer("button 1001");
    createIn(templateItem("txt"));
    EXPECT_EQ(names(work.path()), std::vector<std::string>{"Untitled.txt"});
    EXPECT_EQ(readFile(work / "Untitled.txt"), "keep me");
}

TEST_F(PlainNewFileTest, ReplaceSwapsAFileOrAFolderForTheNewFile) {
    work.write("Untitled.txt", "old");
    work.write("Untitled.json/inner/deep.txt", "x");
    ui->answers({"button 1002", "button 1002"});
    createIn(templateItem("txt"));
    createIn(templateItem("json"));
    EXPECT_EQ(sizeOf(work / "Untitled.txt"), 0u);
    EXPECT_TRUE(std::filesystem::is_regular_file(work / "Untitled.json"));
    EXPECT_EQ(names(work.path()), (std::vector<std::string>{"Untitled.json", "Untitled.txt"}));
}

TEST_F(PlainNewFileTest, NamesExtensionsAndTheTargetFolder) {
    auto makefile = itemWith("Makefile", "");
    makefile->fileName = "Makefile";
    makefile->isSpecialFile = true;
    createIn(makefile);
    auto blankName = itemWith("md", "md");
    blankName->fileName = "  ";
    createIn(blankName);
    auto odd = itemWith("sh", "sh");
    odd->fileName = "a\"b $(touch pwned) `id` ; rm -rf x";
    createIn(odd);
    EXPECT_EQ(names(work.path()),
              (std::vector<std::string>{"Makefile", "Untitled.md", odd->fileName + ".sh"}));

    // A selected file: the new file goes beside it. No selection: the home folder.
    std::string notes = work.write("sub/notes.txt", "n");
    create(templateItem("json"), {notes});
    EXPECT_TRUE(exists(work / "sub/Untitled.json"));
    create(templateItem("json"), {});
    EXPECT_TRUE(exists(xdg.home() + "/Untitled.json"));
}

TEST_F(PlainNewFileTest, BuiltInExtensionsCopyTheShippedBlankOthersAreEmpty) {
    createIn(templateItem("xlsx"));
    createIn(templateItem("rtf"));
    createIn(templateItem("key"));
    createIn(templateItem("docx"));
    createIn(templateItem("pptx"));
    const std::string blanks = std::string(PX_SOURCE_DIR) + "/data/templates/";
    EXPECT_EQ(readFile(work / "Untitled.xlsx"), readFile(blanks + "Untitled.xlsx"));
    EXPECT_EQ(readFile(work / "Untitled.rtf").rfind("{\\rtf1", 0), 0u);
    EXPECT_TRUE(exists(work / "Untitled.key"));
    EXPECT_EQ(sizeOf(work / "Untitled.docx"), 0u);
    EXPECT_EQ(sizeOf(work / "Untitled.pptx"), 0u);
    struct stat info {};
    ASSERT_EQ(::stat((work / "Untitled.docx").c_str(), &info), 0);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(info.st_mode & 0777, 0666 & ~mask);
}

TEST_F(PlainNewFileTest, TemplatesAreCopiedFilesAndFoldersAlike) {
    TempDir store;
    auto file = itemWith("report", "odt");
    file->templatePath = store.write("report.odt", "template bytes");
    createIn(file);
    EXPECT_EQ(readFile(work / "Untitled.odt"), "template bytes");

    store.write("project/src/main.c", "int main;");
    store.mkdir("project/empty");
    std::filesystem::create_symlink("src/main.c", store / "project/link");
    auto folder = itemWith("project", "");
    folder->templatePath = store / "project";
    folder->fileName = "Project";
    createIn(folder);
    EXPECT_EQ(readFile(work / "Project/src/main.c"), "int main;");
    EXPECT_TRUE(std::filesystem::is_directory(work / "Project/empty"));
    EXPECT_TRUE(std::filesystem::is_symlink(work / "Project/link"));
    EXPECT_EQ(readFile(store / "project/src/main.c"), "int main;");
}

TEST_F(PlainNewFileTest, ReplaceNeverRemovesTheTemplateItself) {
    auto self = itemWith("notes", "txt");
    self->fileName = "notes";
    self->templatePath = work.write("notes.txt", "precious");
    ui->answer("button 1002");
    createIn(self);
    EXPECT_EQ(readFile(work / "notes.txt"), "precious");
    ASSERT_EQ(ui->alerts().size(), 2u);
    EXPECT_EQ(ui->alerts().back().informative, localized("Error Common Tip"));
    EXPECT_EQ(names(work.path()), std::vector<std::string>{"notes.txt"});

    // Nor a folder that holds it.
    auto inner = itemWith("inner", "txt");
    inner->fileName = "box";
    inner->isSpecialFile = true;
    inner->templatePath = work.write("box/inner.txt", "inside");
    ui->answers({"button 1002"});
    createIn(inner);
    EXPECT_EQ(readFile(work / "box/inner.txt"), "inside");
}

TEST_F(PlainNewFileTest, UnusableTemplatesAndFoldersGiveAnAlertAndLeaveNothing) {
    auto fifo = itemWith("pipe", "txt");
    fifo->templatePath = work / "pipe";
    ASSERT_EQ(::mkfifo(fifo->templatePath.c_str(), 0600), 0);
    createIn(fifo);
    auto gone = itemWith("gone", "txt");
    gone->templatePath = work / "vanished.txt";
    createIn(gone);
    create(templateItem("txt"), {work / "missing/folder.txt"});
    EXPECT_EQ(names(work.path()), std::vector<std::string>{"pipe"});
    ASSERT_EQ(ui->alerts().size(), 3u);
    for (const auto& alert : ui->alerts())
        EXPECT_EQ(alert.informative, localized("Error Common Tip"));
}

TEST_F(PlainNewFileTest, OpenNewFileOpensItsAddressOnlyWhenAsked) {
    createIn(templateItem("txt"));
    EXPECT_TRUE(workspace->opened.empty());
    suite->setBool("open new file", true);
    auto spaced = itemWith("md", "md");
    spaced->fileName = "my notes #1";
    createIn(spaced);
    ASSERT_EQ(workspace->opened.size(), 1u);
    EXPECT_EQ(workspace->opened.front(), "file://" + work.path() + "/my%20notes%20%231.md");
}

} // namespace
