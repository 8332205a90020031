// From an .iconset folder to an .icns file: each PNG of the set becomes the chunk type that
// holds its pixel size and scale.
#include "media/IcnsFile.h"
#include "support/FileIO.h"

#include <array>
#include <cstring>

namespace px::media::icns {
namespace {

struct SetEntry {
    const char* fileName;
    const char* type;
    std::uint32_t pixels;
};

// Smallest first, the order in which the chunks are written.
constexpr std::array<SetEntry, 10> kSetEntries{{
    {"icon_16x16.png", "icp4", 16},
    {"icon_16x16@2x.png", "ic11", 32},
    {"icon_32x32.png", "icp5", 32},
    {"icon_32x32@2x.png", "ic12", 64},
    {"icon_128x128.png", "ic07", 128},
    {"icon_128x128@2x.png", "ic13", 256},
    {"icon_256x256.png", "ic08", 256},
    {"icon_256x256@2x.png", "ic14", 512},
    {"icon_512x512.png", "ic09", 512},
    {"icon_512x512@2x.png", "ic10", 1024},
}};

std::uint32_t bigEndianAt(const std::string& bytes, std::size_t offset) {
    auto byte = [&](std::size_t i) { return std::uint32_t{static_cast<std::uint8_t>(bytes[i])}; };
    return (byte(offset) << 24) | (byte(offset + 1) << 16) | (byte(offset + 2) << 8) |
           byte(offset + 3);
}

// A PNG file whose header chunk (IHDR, right after the signature) gives pixels × pixels.
bool isSquarePng(const std::string& bytes, std::uint32_t pixels) {
    static constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
    if (bytes.size() < 24 || std::memcmp(bytes.data(), kSignature, 8) != 0) return false;
    if (bytes.compare(12, 4, "IHDR") != 0) return false;
    return bigEndianAt(bytes, 16) == pixels && bigEndianAt(bytes, 20) == pixels;
}

std::optional<Chunk> chunkForEntry(const std::string& folder, const SetEntry& entry) {
    auto bytes = io::readWholeFile(folder + "/" + entry.fileName);
    if (bytes.isError() || !isSquarePng(bytes.value(), entry.pixels)) return {};
    const std::string& png = bytes.value();
    return Chunk{entry.type, std::vector<std::uint8_t>(png.begin(), png.end())};
}

} // namespace

// Only the files the set holds become chunks: a missing size is left out rather than made up,
// since readers choose the nearest size they find.
bool writeFromIconset(const std::string& iconsetFolder, const std::string& icnsPath) {
    std::vector<Chunk> chunks;
    for (const SetEntry& entry : kSetEntries) {
        if (auto chunk = chunkForEntry(iconsetFolder, entry)) chunks.push_back(std::move(*chunk));
    }
    if (chunks.empty()) return false;
    std::vector<std::uint8_t> file = encode(chunks);
    std::string_view bytes(reinterpret_cast<const char*>(file.data()), file.size());
    return !io::replaceFileAtomically(icnsPath, bytes).isError();
}

} // namespace px::media::icns
