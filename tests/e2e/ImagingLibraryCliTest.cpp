// The image library (libvips, poppler) and the PDF library (qpdf) are loaded only by the work
// that needs them.
#include "CliFixture.h"
#include "pdf/SamplePdf.h"

using namespace px::test;

namespace {

class ImagingLibraryCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Convert to"}); }

    // The run with the dynamic loader's list of the files it loaded on standard error.
    ProcessResult runTracingLoads(const Strings& keyPath, const Strings& paths) {
        const int tag = tagAt(keyPath, request(0, work.path(), paths));
        ScopedEnv trace("LD_DEBUG", "files");
        return runTag(tag, request(0, work.path(), paths));
    }

    static bool loadedVips(const ProcessResult& result) {
        return result.err.find("libvips") != std::string::npos;
    }
    static bool loadedQpdf(const ProcessResult& result) {
        return result.err.find("libqpdf") != std::string::npos ||
               result.err.find("pxmenu-pdf.so") != std::string::npos;
    }

    Strings twoDocuments() {
        writeSamplePdf(work / "a.pdf", {"first"});
        writeSamplePdf(work / "b.pdf", {"second", "third"});
        return {work / "a.pdf", work / "b.pdf"};
    }
};

TEST_F(ImagingLibraryCliTest, MergingDocumentsNeverLoadsIt) {
    const ProcessResult merged = runTracingLoads({"Convert to", "PDF"}, twoDocuments());
    ASSERT_EQ(merged.exitStatus, 0);
    EXPECT_FALSE(loadedVips(merged));
    EXPECT_TRUE(loadedQpdf(merged));
    EXPECT_EQ(runProcess({"qpdf", "--check", work / "Untitled.pdf"}).exitStatus, 0);

    ASSERT_EQ(runProcess({"convert", "-size", "8x6", "xc:red", work / "c.jpg"}).exitStatus, 0);
    // A conversion loads it in the worker that converts, not in the command itself.
    const ProcessResult converted = runTracingLoads({"Convert to", "PNG"}, {work / "c.jpg"});
    ASSERT_EQ(converted.exitStatus, 0);
    EXPECT_FALSE(loadedVips(converted));
    EXPECT_TRUE(std::filesystem::exists(work / "c.png"));
}

// Commands that build no document and convert no image start with neither library.
TEST_F(ImagingLibraryCliTest, CommandsThatTouchNoDocumentLoadNeither) {
    const std::string file = work.write("notes.txt", "text");
    const Strings commands[] = {
        {"--version"},
        {"menu", "--", file},
        {"menu", "--json", "--kind", "0", "--target", work.path(), "--", file},
        {"setup"},
        {"config", "list"}};
    ScopedEnv trace("LD_DEBUG", "files");
    for (const Strings& command : commands) {
        SCOPED_TRACE(command.front() + (command.size() > 1 ? " " + command[1] : ""));
        const ProcessResult result = pxmenu(command);
        ASSERT_EQ(result.exitStatus, 0) << result.out;
        EXPECT_FALSE(loadedQpdf(result));
        EXPECT_FALSE(loadedVips(result));
    }
}

TEST_F(ImagingLibraryCliTest, WithoutItConversionFailsClearlyAndMergingStillWorks) {
    TempDir empty;
    ScopedEnv nowhere("PXMENU_LIBDIR", empty.path());
    ASSERT_EQ(runProcess({"convert", "-size", "8x6", "xc:red", work / "c.jpg"}).exitStatus, 0);
    const ProcessResult converted =
        runEntry({"Convert to", "PNG"}, request(0, work.path(), {work / "c.jpg"}), "button 1\n");
    EXPECT_NE(converted.err.find("pxmenu-imaging.so is not installed"), std::string::npos)
        << converted.err;
    const auto alerts = withKey(converted.out, "message");
    ASSERT_EQ(alerts.size(), 1u) << converted.out;
    EXPECT_EQ(alerts[0]["informative"], "The image could not be converted.");
    EXPECT_FALSE(std::filesystem::exists(work / "c.png"));

    const ProcessResult merged =
        runEntry({"Convert to", "PDF"}, request(0, work.path(), twoDocuments()));
    ASSERT_EQ(merged.exitStatus, 0) << merged.err;
    const std::string info = runProcess({"pdfinfo", work / "Untitled.pdf"}).out;
    EXPECT_NE(info.find("Pages:           3\n"), std::string::npos) << info;
}

} // namespace
