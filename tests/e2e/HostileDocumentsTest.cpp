// "Convert to" on documents and images crafted to loop, to be huge or to be read only the way
// PDF readers read: each run ends, says once what failed, and leaves nothing it did not finish.
#include "CliFixture.h"

#include <sys/stat.h>

using namespace px::test;

namespace {

// A PDF of the numbered objects (1 is the catalogue), with a correct cross-reference table.
std::string pdfOf(const std::vector<std::string>& objects, const std::string& before = {}) {
    std::string out = before + "%PDF-1.4\n";
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        offsets.push_back(out.size());
        out += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t table = out.size();
    out += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (std::size_t offset : offsets) {
        std::string number = std::to_string(offset);
        out += std::string(10 - number.size(), '0') + number + " 00000 n \n";
    }
    return out + "trailer\n<< /Size " + std::to_string(objects.size() + 1) +
           " /Root 1 0 R >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
}

const std::string kCatalog = "<< /Type /Catalog /Pages 2 0 R >>";
const std::string kBox = " /MediaBox [0 0 90 90]";

std::string manyPages(int count) {
    std::vector<std::string> objects{kCatalog, ""};
    std::string kids;
    for (int i = 0; i < count; ++i) {
        objects.push_back("<< /Type /Page /Parent 2 0 R >>");
        kids += std::to_string(i + 3) + " 0 R ";
    }
    objects[1] =
        "<< /Type /Pages" + kBox + " /Count " + std::to_string(count) + " /Kids [" + kids + "] >>";
    return pdfOf(objects);
}

std::string deeplyNested(int depth) {
    std::vector<std::string> objects{kCatalog};
    for (int level = 0; level < depth; ++level) {
        const int self = level + 2;
        const std::string parent = level ? " /Parent " + std::to_string(self - 1) + " 0 R" : "";
        objects.push_back("<< /Type /Pages /Count 1 /Kids [" + std::to_string(self + 1) + " 0 R]" +
                          parent + " >>");
    }
    objects.push_back("<< /Type /Page" + kBox + " /Parent " + std::to_string(depth + 1) +
                      " 0 R >>");
    return pdfOf(objects);
}

std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xffffffffu;
    for (unsigned char byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

std::string bigEndian(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
            static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string pngChunk(const std::string& type, const std::string& data) {
    return bigEndian(static_cast<std::uint32_t>(data.size())) + type + data +
           bigEndian(crc32(type + data));
}

// A PNG whose header claims 100,000 x 100,000 RGB pixels, with a few bytes of data.
std::string hugePng() {
    const std::string header =
        bigEndian(100000) + bigEndian(100000) + std::string("\x08\x02\0\0\0", 5);
    const std::string data("\x78\x9c\x63\x60\x00\x00\x00\x02\x00\x01", 10); // one zero byte
    return std::string("\x89PNG\r\n\x1a\n", 8) + pngChunk("IHDR", header) + pngChunk("IDAT", data) +
           pngChunk("IEND", "");
}

class HostileDocumentsTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus({"Convert to"}); }
    // The alerts of a run.
    static std::size_t alerts(const ProcessResult& result) {
        std::size_t count = 0;
        for (const auto& line : withKey(result.out, "prompt"))
            count += line.at("prompt") == "alert";
        return count;
    }
};

TEST_F(HostileDocumentsTest, EachRunEndsSaysOnceWhatFailedAndLeavesNothing) {
    struct Case {
        const char* what;
        std::string name, bytes, key; // empty bytes: a pipe nobody writes to
    };
    const std::vector<Case> cases{
        {"an image claiming 100,000 x 100,000 pixels", "huge.png", hugePng(), "TIFF"},
        {"a 100,000-page document", "many.pdf", manyPages(100000), "JPEG"},
        {"a document that never ends", "endless.pdf", "", "JPEG"},
        {"bytes that are no document", "noise.pdf", "%PDF-1.7\n" + std::string(3000, '\x9d'),
         "JPEG"},
    };
    ScopedEnv watchdog("PXMENU_WORK_TIMEOUT", "3");
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        TempDir folder;
        const std::string file = folder / test.name;
        if (test.bytes.empty())
            ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
        else
            folder.write(test.name, test.bytes);
        const ProcessResult result =
            runEntry({"Convert to", test.key}, request(0, folder.path(), {file}), "button 1000\n");
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(alerts(result), 1u) << result.out;
        EXPECT_EQ(listing(folder.path()), Strings{test.name});
    }
    // A page tree that refers to itself: the renderer breaks the loop and renders what it can.
    TempDir folder;
    const std::string loop =
        folder.write("loop.pdf", pdfOf({kCatalog, "<< /Type /Pages /Count 2 /Kids [2 0 R 3 0 R] >>",
                                        "<< /Type /Page" + kBox + " /Parent 2 0 R >>"}));
    const ProcessResult result =
        runEntry({"Convert to", "PNG"}, request(0, folder.path(), {loop}), "button 1000\n");
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_LE(alerts(result), 1u) << result.out;
}

TEST_F(HostileDocumentsTest, PdfsAreOpenedTheWayReadersOpenThem) {
    struct Case {
        const char* what;
        std::string bytes;
    };
    const std::string page = "<< /Type /Page" + kBox + " /Parent 2 0 R >>";
    const std::vector<Case> cases{
        {"bytes before the header",
         pdfOf({kCatalog, "<< /Type /Pages /Count 1 /Kids [3 0 R] >>", page}, "garbage\r\n")},
        {"pages nested deeply", deeplyNested(60)},
        {"a page placed directly", pdfOf({kCatalog, "<< /Type /Page" + kBox + " >>"})},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        TempDir folder;
        const std::string file = folder.write("doc.pdf", test.bytes);
        const ProcessResult result =
            runEntry({"Convert to", "PNG"}, request(0, folder.path(), {file}));
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(alerts(result), 0u) << result.out;
        EXPECT_EQ(listing(folder.path()), (Strings{"doc", "doc.pdf"}));
        EXPECT_EQ(listing(folder / "doc"), Strings{"1.png"});
    }
}

TEST_F(HostileDocumentsTest, BrokenImagesLeaveNoRawWarningsOnStandardError) {
    ASSERT_EQ(runProcess({"convert", "-size", "300x200", "plasma:", work / "whole.png"}).exitStatus,
              0);
    ASSERT_EQ(runProcess({"convert", work / "whole.png", work / "whole.jpg"}).exitStatus, 0);
    const std::string png = work.write("cut.png", readFile(work / "whole.png").substr(0, 5000));
    const std::string jpeg = work.write("cut.jpg", readFile(work / "whole.jpg").substr(0, 3000));
    for (const char* key : {"PDF", "BMP"}) {
        SCOPED_TRACE(key);
        const ProcessResult result =
            runEntry({"Convert to", key}, request(0, work.path(), {png, jpeg}),
                     "button 1000\nbutton 1000\n");
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err.find("WARNING"), std::string::npos) << result.err.substr(0, 300);
    }
}

} // namespace
