#include "actions/BlankDocuments.h"

#include "NewFileFixture.h"

using namespace px;
using namespace px::test;

namespace {

const std::string kSource = PX_SOURCE_DIR;
const std::string kShipped = kSource + "/data/templates";

TEST(BlankDocumentsTest, TheScriptMakesTheShippedDocumentsAndTheyAreWellFormed) {
    TempDir out;
    auto made = runProcess({"python3", kSource + "/scripts/make-blank-templates.py", out.path()});
    ASSERT_EQ(made.exitStatus, 0) << made.err;
    for (const auto& ext : blank::builtInExtensions())
        EXPECT_EQ(readFile(out / ("Untitled." + ext)), readFile(kShipped + "/Untitled." + ext))
            << ext;
    EXPECT_FALSE(blank::documentPath("pptx"));
    auto check =
        runProcess({"python3", kSource + "/tests/newfile/check_blank_documents.py", kShipped});
    EXPECT_EQ(check.exitStatus, 0) << check.out << check.err;
}

TEST(BlankDocumentsTest, TheWorkbookLoadsInLibreOffice) {
    if (runProcess({"sh", "-c", "command -v soffice"}).exitStatus != 0)
        GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    TempDir out, profile;
    // A damaged workbook does not load: the check can fail.
    const std::string broken = out.write("Broken.xlsx", std::string("PK\3\4") + "not a zip");
    runProcess({"soffice", "-env:UserInstallation=file://" + profile.path(), "--headless",
                "--convert-to", "csv", "--outdir", out.path(), kShipped + "/Untitled.xlsx",
                broken});
    EXPECT_TRUE(exists(out / "Untitled.csv"));
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
    EXPECT_EQ(alertTexts(), std::vector<std::string>{localized("Error Common Tip")});
}

} // namespace
