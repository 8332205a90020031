#include "media/ImageFile.h"

#include "convert/ImageSamples.h"
#include "media/IcnsFile.h"
#include "support_files/TestSupport.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace px::test {
namespace {

struct Target {
    const char* key;
    const char* extension;
    const char* magickName; // identify's %m
    bool keepsAlpha;
};

const Target kTargets[] = {
    {"PNG", "png", "PNG", true},    {"JPEG", "jpeg", "JPEG", false}, {"JP2", "jp2", "JP2", true},
    {"TIFF", "tiff", "TIFF", true}, {"BMP", "bmp", "BMP", false},    {"GIF", "gif", "GIF", true},
};

const char* const kSources[] = {"png",  "jpg", "tiff", "bmp",  "gif",
                                "webp", "jp2", "ico",  "wbmp", "svg"};

bool isBilevel(const std::string& ext) {
    return ext == "wbmp";
}

bool hasTransparentCorner(const std::string& ext) {
    return ext == "png" || ext == "tiff" || ext == "gif" || ext == "webp" || ext == "jp2" ||
           ext == "ico";
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
            expectColours(source, out, target);
        }
    }
}

// A write replaces what was there whole, with the usual permissions; a failed one answers false,
// keeps what was there and leaves no temporary behind.
TEST(ImageFile, WritesReplaceWholeOrNotAtAll) {
    TempDir dir;
    const std::string out = dir.write("photo.jpeg", "old contents that are not an image");
    const mode_t previous = ::umask(022);
    const bool saved = media::saveImageWithExt(sampleImage(), "JPEG", out);
    ::umask(previous);
    ASSERT_TRUE(saved);
    EXPECT_EQ(identify(out), "JPEG 64x48");
    struct stat info {};
    ASSERT_EQ(::stat(out.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0644u);

    EXPECT_FALSE(media::saveImageWithExt(sampleImage(), "PNG", dir / "missing/folder/a.png"));
    EXPECT_FALSE(media::saveImageWithExt(vips::VImage(), "PNG", dir / "empty.png"));
    EXPECT_FALSE(media::saveImageWithExt(media::resampledImage(sampleImage(), 0, 10), "PNG",
                                         dir / "none.png"));
    const std::string folder = dir.mkdir("taken.png");
    dir.write("taken.png/inside", "keep me");
    EXPECT_FALSE(media::saveImageWithExt(sampleImage(), "PNG", folder));
    EXPECT_EQ(readFile(folder + "/inside"), "keep me");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 2);
}

TEST(ImageFile, FilesThatAreNotImagesDoNotLoad) {
    TempDir dir;
    std::string noise(4096, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<char>(i * 7919 % 251);
    for (const std::string& path :
         {dir / "absent.png", dir.write("text.png", "just some words\n"), dir.write("empty.jpg"),
          dir.write("noise.gif", noise), dir.mkdir("folder.png")})
        EXPECT_FALSE(media::loadImage(path).has_value()) << path;
}

} // namespace
} // namespace px::test
