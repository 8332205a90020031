#include "actions/BlankDocuments.h"

#include "NewFileFixture.h"
#include "config/Localization.h"

#include <cstdlib>
#include <sstream>
#include <unistd.h>

using namespace px;
using namespace px::test;

namespace {

const std::string kSource = PX_SOURCE_DIR;
const std::string kShipped = kSource + "/data/templates";

std::optional<std::string> onPath(const std::string& program) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (!folder.empty() && ::access((folder + "/" + program).c_str(), X_OK) == 0)
            return folder + "/" + program;
    return std::nullopt;
}

TEST(BlankDocumentsTest, TheTenShippedDocumentsAreThereAndWellFormed) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(kShipped))
        files.push_back(entry.path().filename().string());
    std::sort(files.begin(), files.end());
    std::vector<std::string> expected;
    for (const auto& ext : blank::builtInExtensions())
        expected.push_back("Untitled." + ext);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(files, expected);
    EXPECT_TRUE(blank::isBuiltIn("XLSX"));
    EXPECT_FALSE(blank::isBuiltIn("docx"));
    EXPECT_FALSE(blank::documentPath("pptx"));

    auto check =
        runProcess({"python3", kSource + "/tests/newfile/check_blank_documents.py", kShipped});
    EXPECT_EQ(check.exitStatus, 0) << check.out << check.err;
    for (const char* empty : {"wps", "et", "dps", "pages", "numbers", "key"})
        EXPECT_EQ(std::filesystem::file_size(kShipped + "/Untitled." + empty), 0u) << empty;
}

TEST(BlankDocumentsTest, TheScriptMakesTheCommittedBytes) {
    TempDir out;
    auto made = runProcess({"python3", kSource + "/scripts/make-blank-templates.py", out.path()});
    ASSERT_EQ(made.exitStatus, 0) << made.err;
    for (const auto& ext : blank::builtInExtensions())
        EXPECT_EQ(readFile(out / ("Untitled." + ext)), readFile(kShipped + "/Untitled." + ext))
            << ext;
}

TEST(BlankDocumentsTest, TheWorkbookLoadsInLibreOffice) {
    auto office = onPath("soffice");
    if (!office)
        GTEST_SKIP()
            << "LibreOffice (soffice) is not installed; the structural check above still runs";
    TempDir out, profile;
    auto converted =
        runProcess({*office, "-env:UserInstallation=file://" + profile.path(), "--headless",
                    "--convert-to", "csv", "--outdir", out.path(), kShipped + "/Untitled.xlsx"});
    EXPECT_EQ(converted.exitStatus, 0) << converted.err;
    EXPECT_TRUE(exists(out / "Untitled.csv")) << converted.out << converted.err;
    // A damaged workbook does not load: the check can fail.
    out.write("Broken.xlsx", std::string("PK\3\4") + "not a zip");
    runProcess({*office, "-env:UserInstallation=file://" + profile.path(), "--headless",
                "--convert-to", "csv", "--outdir", out.path(), out / "Broken.xlsx"});
    EXPECT_FALSE(exists(out / "Broken.csv"));
}

class InstalledDataTest : public NewFileFixture {};

TEST_F(InstalledDataTest, TheDataFolderIsFoundAtRunTimeAndAMissingBlankIsReported) {
    TempDir installed;
    installed.write("templates/Untitled.rtf", "{\\rtf1 custom}");
    ScopedEnv dataDir("PXMENU_DATADIR", installed.path());
    createIn(templateItem("rtf"));
    EXPECT_EQ(readFile(work / "Untitled.rtf"), "{\\rtf1 custom}");
    createIn(itemWith("html", "html"));
    EXPECT_FALSE(exists(work / "Untitled.html"));
    ASSERT_EQ(ui->alerts().size(), 1u);
    EXPECT_EQ(ui->alerts().front().informative, localized("Error Common Tip"));
}

} // namespace
