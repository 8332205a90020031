// "Merge to PDF" and page extraction through the pxmenu command, with scripted answers.
#include "PdfTestTools.h"
#include "SamplePdf.h"
#include "e2e/CliFixture.h"

#include <gmock/gmock.h>

namespace px::test {
namespace {

using ::testing::ElementsAre;

class PdfCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "right", "Convert to", "disabled", "false"}).exitStatus,
                  0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }
    std::vector<std::string> selection(const std::vector<std::string>& paths) {
        std::vector<std::string> args{"--target", work.path(), "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return args;
    }
    // The chosen "Convert to" target's menu entry for the selection.
    nlohmann::json target(const std::vector<std::string>& paths, const std::string& key) {
        const nlohmann::json menu = menuJson(selection(paths));
        const auto* convert = entry(menu, "Convert to");
        const auto* child = convert ? entry(convert->at("children"), key) : nullptr;
        return child ? *child : nlohmann::json{};
    }
    ProcessResult run(const std::vector<std::string>& paths, const std::string& key) {
        const nlohmann::json chosen = target(paths, key);
        EXPECT_TRUE(chosen.contains("tag")) << key;
        std::vector<std::string> args{"run", "--tag", chosen.value("tag", nlohmann::json(0)).dump(),
                                      "--ui", "script:" + answers.write("script.txt", "")};
        for (const std::string& arg : selection(paths))
            args.push_back(arg);
        return pxmenu(args);
    }
    std::vector<double> progress(const std::string& out) {
        std::vector<double> values;
        for (const auto& line : transcript(out)) {
            EXPECT_FALSE(line.contains("prompt")) << line;
            if (line.contains("progress")) values.push_back(line["progress"].get<double>());
        }
        return values;
    }

    TempDir answers;
    ScopedEnv locale{"LC_ALL", "C.UTF-8"};
    ScopedEnv language{"LANGUAGE", std::nullopt};
};

TEST_F(PdfCliTest, MergesImagesAndDocumentsIntoAnUntitledDocument) {
    const std::string picture = makeImage(work / "picture.png", {"-size", "40x30", "xc:green"});
    const std::string report = writeSamplePdf(work / "report.pdf", {"Report one", "Report two"});
    EXPECT_EQ(target({picture, report}, "PDF").value("title", ""), "Merge to PDF");
    const ProcessResult result = run({picture, report}, "PDF");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const std::string merged = work / "Untitled.pdf";
    EXPECT_THAT(pdfPageSizes(merged), ElementsAre("40 x 30", "612 x 792", "612 x 792"));
    EXPECT_THAT(pdfText(merged), ::testing::HasSubstr("Report two"));
}

TEST_F(PdfCliTest, ExtractsEveryPageAndTheProgressEndsFull) {
    const std::string doc = writeSamplePdf(work / "doc.pdf", {"One", "Two", "Three", "Four"});
    const ProcessResult result = run({doc}, "JPEG");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_THAT(folderNames(work / "doc"), ElementsAre("1.jpeg", "2.jpeg", "3.jpeg", "4.jpeg"));
    const std::vector<double> values = progress(result.out);
    ASSERT_FALSE(values.empty());
    EXPECT_DOUBLE_EQ(values.back(), 1.0);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
}

} // namespace
} // namespace px::test
