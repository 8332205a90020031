#include "media/ImageFile.h"

#include "convert/ImageSamples.h"
#include "media/IcnsFile.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Target {
    const char* key;
    const char* extension;
    const char* magickName; // identify's %m
    const char* fileSays;   // in file(1)'s description
    bool keepsAlpha;
};

const Target kTargets[] = {
    {"PNG", "png", "PNG", "PNG image data", true},
    {"JPEG", "jpeg", "JPEG", "JPEG image data", false},
    {"JP2", "jp2", "JP2", "JPEG 2000", true},
    {"TIFF", "tiff", "TIFF", "TIFF image data", true},
    {"BMP", "bmp", "BMP", "PC bitmap", false},
    {"GIF", "gif", "GIF", "GIF image data", true},
};

const char* const kSources[] = {"png", "jpg", "jpeg", "jpe", "jfif", "tiff", "tif",
                                "bmp", "gif", "webp", "jp2", "ico",  "wbmp", "svg"};

bool isBilevel(const std::string& ext) {
    return ext == "wbmp";
}

bool hasTransparentCorner(const std::string& ext) {
    return ext == "png" || ext == "tiff" || ext == "tif" || ext == "gif" || ext == "webp" ||
           ext == "jp2" || ext == "ico";
}

void expectColours(const std::string& source, const std::string& written, const Target& target) {
    const std::string ext = source.substr(source.rfind('.') + 1);
    if (isBilevel(ext)) return; // two colours only: red and blue both come out as one grey
    const Rgb left = pixelAt(written, 20, 30), right = pixelAt(written, 50, 30);
    EXPECT_GT(left.red, 200) << written;
    EXPECT_LT(left.blue, 60) << written;
    EXPECT_GT(right.blue, 200) << written;
    EXPECT_LT(right.red, 60) << written;
    if (!hasTransparentCorner(ext)) return;
    if (target.keepsAlpha) {
        EXPECT_EQ(alphaAt(written, 2, 2), 0) << written;
    } else {
        const Rgb corner = pixelAt(written, 2, 2);
        EXPECT_GT(corner.red + corner.green + corner.blue, 3 * 235) << "not white: " << written;
    }
}

TEST(ImageFile, ConvertsEverySourceFormatToEveryTarget) {
    TempDir dir;
    for (const char* sourceExt : kSources) {
        const std::string source = dir / (std::string("sample-") + sourceExt + "." + sourceExt);
        if (!writeSample(source)) {
            std::fprintf(stderr, "this machine cannot make .%s samples; skipped\n", sourceExt);
            continue;
        }
        const auto image = media::loadImage(source, media::ImageAccess::Random);
        ASSERT_TRUE(image.has_value()) << source;
        for (const Target& target : kTargets) {
            const std::string out =
                dir / (std::string("from-") + sourceExt + "." + target.extension);
            ASSERT_TRUE(media::saveImageWithExt(*image, target.key, out)) << source << " " << out;
            EXPECT_EQ(identify(out), std::string(target.magickName) + " 64x48") << out;
            EXPECT_THAT(describe(out), HasSubstr(target.fileSays)) << out;
            expectColours(source, out, target);
        }
    }
}

TEST(ImageFile, IcnsFilesGiveTheirLargestPictureForAnyTarget) {
    TempDir dir;
    auto pngChunk = [](const char* type, const vips::VImage& image) {
        void* buffer = nullptr;
        std::size_t size = 0;
        image.write_to_buffer(".png", &buffer, &size);
        media::icns::Chunk chunk{
            type, std::vector<std::uint8_t>(static_cast<std::uint8_t*>(buffer),
                                            static_cast<std::uint8_t*>(buffer) + size)};
        g_free(buffer);
        return chunk;
    };
    const vips::VImage big = sampleImage();
    const auto bytes =
        media::icns::encode({pngChunk("icp4", big.resize(0.25)), pngChunk("ic07", big),
                             pngChunk("icp5", big.resize(0.5))});
    const std::string source = dir.write("App.icns", std::string(bytes.begin(), bytes.end()));
    const auto image = media::loadImage(source);
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->width(), kSampleWidth);
    ASSERT_TRUE(media::saveImageWithExt(*image, "GIF", dir / "App.gif"));
    EXPECT_EQ(identify(dir / "App.gif"), "GIF 64x48");
    EXPECT_FALSE(media::loadImage(dir.write("fake.icns", "icns but not really")).has_value());
}

TEST(ImageFile, SequentialLoadSavesOnce) {
    TempDir dir;
    const std::string source = dir / "big.jpg";
    ASSERT_TRUE(writeSample(source));
    const auto image = media::loadImage(source, media::ImageAccess::Sequential);
    ASSERT_TRUE(image.has_value());
    ASSERT_TRUE(media::saveImageWithExt(*image, "TIFF", dir / "big.tiff"));
    EXPECT_EQ(identify(dir / "big.tiff"), "TIFF 64x48");
}

TEST(ImageFile, KeysChooseTheEncodingCaseInsensitivelyWithPngForTheRest) {
    TempDir dir;
    const vips::VImage image = sampleImage();
    const std::pair<const char*, const char*> cases[] = {
        {"jpg", "JPEG"}, {"JPEG", "JPEG"}, {"Bmp", "BMP"}, {"tif", "PNG"},
        {"webp", "PNG"}, {"PDF", "PNG"},   {"", "PNG"},    {"gif", "GIF"},
    };
    for (const auto& [key, format] : cases) {
        const std::string out = dir / (std::string("key-") + key + ".out");
        ASSERT_TRUE(media::saveImageWithExt(image, key, out)) << key;
        EXPECT_THAT(identify(out), StartsWith(std::string(format) + " ")) << key;
    }
}

TEST(ImageFile, ReplacesAnExistingFileWholeAndLeavesNoTemporaryBehind) {
    TempDir dir;
    const std::string out = dir.write("photo.png", "old contents that are not an image");
    ASSERT_TRUE(media::saveImageWithExt(sampleImage(), "PNG", out));
    EXPECT_EQ(identify(out), "PNG 64x48");
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(dir.path()))
        ++entries;
    EXPECT_EQ(entries, 1);
}

TEST(ImageFile, NewFilesGetTheUsualPermissions) {
    TempDir dir;
    const mode_t previous = ::umask(022);
    const bool saved = media::saveImageWithExt(sampleImage(), "JPEG", dir / "a.jpeg");
    ::umask(previous);
    ASSERT_TRUE(saved);
    struct stat info {};
    ASSERT_EQ(::stat((dir / "a.jpeg").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0644u);
}

TEST(ImageFile, FailedWritesAnswerFalseAndKeepTheOldFile) {
    TempDir dir;
    EXPECT_FALSE(media::saveImageWithExt(sampleImage(), "PNG", dir / "missing/folder/a.png"));
    EXPECT_FALSE(media::saveImageWithExt(vips::VImage(), "PNG", dir / "empty.png"));
    EXPECT_FALSE(exists(dir / "empty.png"));

    const std::string folder = dir.mkdir("taken.png");
    dir.write("taken.png/inside", "keep me");
    EXPECT_FALSE(media::saveImageWithExt(sampleImage(), "PNG", folder));
    EXPECT_EQ(readFile(folder + "/inside"), "keep me");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(ImageFile, FilesThatAreNotImagesDoNotLoad) {
    TempDir dir;
    EXPECT_FALSE(media::loadImage(dir / "absent.png").has_value());
    EXPECT_FALSE(media::loadImage(dir.write("text.png", "just some words\n")).has_value());
    EXPECT_FALSE(media::loadImage(dir.write("empty.jpg", "")).has_value());
    std::string noise(4096, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<char>(i * 7919 % 251);
    EXPECT_FALSE(media::loadImage(dir.write("noise.gif", noise)).has_value());
    EXPECT_FALSE(media::loadImage(dir.mkdir("folder.png")).has_value());
}

TEST(ImageFile, ResamplesToExactSizesKeepingTransparency) {
    TempDir dir;
    const vips::VImage square = sampleImage().crop(0, 0, 48, 48);
    for (const auto& [width, height] : {std::pair{16, 16}, {167, 167}, {1024, 1024}, {55, 31}}) {
        const vips::VImage resized = media::resampledImage(square, width, height);
        EXPECT_EQ(resized.width(), width);
        EXPECT_EQ(resized.height(), height);
        EXPECT_TRUE(resized.has_alpha());
    }
    const std::string out = dir / "icon.png";
    ASSERT_TRUE(media::saveImageWithExt(media::resampledImage(square, 480, 480), "PNG", out));
    EXPECT_EQ(alphaAt(out, 5, 5), 0);
    EXPECT_EQ(alphaAt(out, 300, 300), 255);
    EXPECT_GT(pixelAt(out, 300, 300).red, 250);
}

TEST(ImageFile, ResamplingToNoSizeGivesAnImageThatDoesNotSave) {
    TempDir dir;
    const vips::VImage none = media::resampledImage(sampleImage(), 0, 10);
    EXPECT_FALSE(media::saveImageWithExt(none, "PNG", dir / "none.png"));
}

} // namespace
} // namespace px::test
