#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <vips/vips8>

// The .icns container: a header, an optional table of contents and typed chunks whose data for
// the modern types is a PNG or JPEG 2000 file.
namespace px::media::icns {

struct Chunk {
    std::string type; // four characters, such as "ic10"
    std::vector<std::uint8_t> data;
};

// Builds the file: "icns" header, a "TOC " chunk listing the chunks, then the chunks in order.
std::vector<std::uint8_t> encode(const std::vector<Chunk>& chunks);

// Splits a file into its chunks (the table of contents excluded); empty when the data is not
// a well-formed icns file.
std::optional<std::vector<Chunk>> decode(const std::vector<std::uint8_t>& data);

// Turns a folder of icon_<size>x<size>[@2x].png files into an .icns file (the retina types
// included); false when nothing usable was found or the file could not be written.
bool writeFromIconset(const std::string& iconsetFolder, const std::string& icnsPath);

// The largest PNG or JPEG 2000 image held in the .icns file at path.
std::optional<vips::VImage> loadLargestImage(const std::string& path);

} // namespace px::media::icns
