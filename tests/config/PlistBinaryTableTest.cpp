#include "config/PlistBinaryTable.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

using px::plist::BinaryTable;

namespace {

// A binary property list of one-byte offsets and references: the objects as given, then their
// offset table and the trailer.
std::string binaryList(const std::string& objects, const std::string& offsets,
                       std::uint8_t refSize = 1, std::uint8_t top = 0) {
    std::string out = "bplist00" + objects;
    std::uint8_t table = static_cast<std::uint8_t>(out.size());
    out += offsets;
    std::string trailer(32, '\0');
    trailer[6] = 1;
    trailer[7] = static_cast<char>(refSize);
    trailer[15] = static_cast<char>(offsets.size());
    trailer[23] = static_cast<char>(top);
    trailer[31] = static_cast<char>(table);
    return out + trailer;
}

// {"a": "b"}: the dictionary at 8 refers to the key (object 1, at 11) and the value (object 2).
const std::string kDictionary =
    binaryList(std::string("\xD1\x01\x02\x51\x61\x51\x62", 7), std::string("\x08\x0B\x0D", 3));

} // namespace

TEST(PlistBinaryTable, ReadsTheTrailerOffsetsAndReferencesOfAWellFormedList) {
    BinaryTable table(kDictionary);
    ASSERT_TRUE(table.plausible());
    EXPECT_EQ(table.objectCount(), 3u);
    EXPECT_EQ(table.topObject(), 0u);
    EXPECT_EQ(table.offsetOf(0), 8u);
    EXPECT_EQ(table.offsetOf(2), 13u);
    EXPECT_EQ(table.offsetOf(3), table.size()) << "an index past the table points past the end";
    EXPECT_EQ(table.typeAt(8), 0xD);
    std::uint64_t refs = 0;
    EXPECT_EQ(table.countAt(8, refs), 1u);
    EXPECT_EQ(refs, 9u);
    EXPECT_EQ(table.referenceAt(refs, 0), 1u);
    EXPECT_EQ(table.referenceAt(refs, 1), 2u);
    EXPECT_TRUE(table.referencesFit(refs, 2));
    EXPECT_FALSE(table.referencesFit(refs, table.size()));
}

TEST(PlistBinaryTable, ReadsCountsTooLargeForTheMarkerFromTheIntegerAfterIt) {
    // An array marker with 0xF, then a two-byte integer (marker 0x11) holding 300.
    const std::string bytes = binaryList(std::string("\xAF\x11\x01\x2C", 4), "\x08");
    BinaryTable table(bytes);
    std::uint64_t contents = 0;
    EXPECT_EQ(table.countAt(8, contents), 300u);
    EXPECT_EQ(contents, 12u);
    EXPECT_FALSE(table.referencesFit(contents, 300)) << "300 references do not fit in 45 bytes";
}

TEST(PlistBinaryTable, RefusesTrailersThatDoNotFitTheBytes) {
    EXPECT_FALSE(BinaryTable("bplist00").plausible()) << "too short for a trailer";
    EXPECT_FALSE(BinaryTable(std::string(60, '\0')).plausible()) << "sizes of zero";
    std::string wideRefs = kDictionary;
    wideRefs[wideRefs.size() - 32 + 7] = 9;
    EXPECT_FALSE(BinaryTable(wideRefs).plausible()) << "references wider than eight bytes";
    std::string tableOutside = kDictionary;
    tableOutside.back() = static_cast<char>(tableOutside.size());
    EXPECT_FALSE(BinaryTable(tableOutside).plausible()) << "offset table past the end";
    std::string tooMany = kDictionary;
    tooMany[tooMany.size() - 32 + 15] = 40;
    EXPECT_FALSE(BinaryTable(tooMany).plausible()) << "more objects than the table holds";
}

TEST(PlistBinaryTable, ReadsNothingPastTheEndOfTheBytes) {
    BinaryTable table(kDictionary);
    std::uint64_t end = table.size();
    EXPECT_EQ(table.byteAt(end), 0);
    EXPECT_EQ(table.byteAt(end + 1000), 0);
    EXPECT_EQ(table.number(end - 1, 8), table.byteAt(end - 1)) << "only the last byte is read";
    // A long-count marker as the very last byte keeps its nibble and points past the end (the
    // byte belongs to the trailer here, which a crafted offset may well point at).
    std::string cut = kDictionary;
    cut.back() = '\xAF';
    std::uint64_t contents = 0;
    EXPECT_EQ(BinaryTable(cut).countAt(end - 1, contents), 0xFu);
    EXPECT_EQ(contents, end);
}
