#include "config/PlistCodec.h"

#include "support_files/TestSupport.h"

#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace px::plist;

namespace {

// Value's == treats true, 1 and 1.0 as equal and ignores mutability; a round trip must keep
// the kind of every value too.
void expectSameTree(const Value& expected, const Value& actual, const std::string& where = "/") {
    ASSERT_FALSE(actual.isAbsent()) << where;
    ASSERT_EQ(expected.type(), actual.type()) << where << ": " << actual.description();
    if (expected.isArray()) {
        ASSERT_EQ(expected.array().size(), actual.array().size()) << where;
        for (std::size_t i = 0; i < expected.array().size(); ++i)
            expectSameTree(expected.array()[i], actual.array()[i], where + std::to_string(i) + "/");
    } else if (expected.isDictionary()) {
        ASSERT_EQ(expected.dictionary().size(), actual.dictionary().size()) << where;
        for (const auto& [key, item] : expected.dictionary())
            expectSameTree(item, actual.get(key), where + key + "/");
    } else {
        EXPECT_EQ(expected, actual) << where;
    }
}

Bytes everyByte() {
    Bytes bytes;
    for (int i = 0; i < 256; ++i)
        bytes.push_back(static_cast<std::uint8_t>(255 - i));
    return bytes;
}

// 2024-02-03 04:05:06 UTC.
constexpr double kInstant = 1706933106;

// Every kind with the values that trouble writers: signs, extremes, fractions, scripts, zero
// bytes, nesting and empty containers.
Value sampleTree() {
    constexpr auto minInt = std::numeric_limits<std::int64_t>::min();
    constexpr auto maxInt = std::numeric_limits<std::int64_t>::max();
    Array numbers{true, false, 0, -1, 42, minInt, maxInt, 0.1, 1.0 / 3, -2.5e-10, 1e300, 3.0};
    Array texts{"",    "plain",  "Привет мир",  "日本語のテキスト",
                "😀 🎉", "<&>\"'", "  padded \n", "tab\there"};
    Array dates{Value::makeDate(kInstant), Value::makeDate(0), Value::makeDate(-86400 * 365)};
    Array data{Value::makeData({}), Value::makeData({0, 0, 1, 0}), Value::makeData(everyByte())};
    Dictionary nested{
        {"deeper",
         Value::makeArray({Value::makeArray({Value::makeDictionary({{"leaf", "end"}})})})},
        {"emptyArray", Value::makeArray()},
        {"emptyDict", Value::makeDictionary()}};
    return Value::makeMutableDictionary({{"numbers", Value::makeArray(numbers)},
                                         {"texts", Value::makeMutableArray(texts)},
                                         {"dates", Value::makeArray(dates)},
                                         {"data", Value::makeArray(data)},
                                         {"nested", Value::makeDictionary(nested)},
                                         {"", "empty key"},
                                         {"ключ 鍵", "unicode key"}});
}

Value roundTrip(const Value& value, Format format) {
    auto bytes = serialize(value, format);
    EXPECT_FALSE(bytes.isError()) << bytes.error().message;
    if (bytes.isError()) return {};
    auto back = parse(bytes.value());
    EXPECT_FALSE(back.isError()) << back.error().message;
    return back.isError() ? Value{} : back.value();
}

bool anyMutable(const Value& value) {
    if (value.isMutable()) return true;
    if (value.isArray())
        for (const auto& item : value.array())
            if (anyMutable(item)) return true;
    if (value.isDictionary())
        for (const auto& [key, item] : value.dictionary())
            if (anyMutable(item)) return true;
    return false;
}

} // namespace

TEST(PlistCodec, XmlRoundTripKeepsEveryKindAndValue) {
    Value tree = sampleTree();
    Value back = roundTrip(tree, Format::Xml);
    expectSameTree(tree, back);
    EXPECT_FALSE(anyMutable(back)) << "containers are read back immutable";
}

TEST(PlistCodec, BinaryRoundTripKeepsEveryKindAndValue) {
    Value tree = sampleTree();
    Value back = roundTrip(tree, Format::Binary);
    expectSameTree(tree, back);
    EXPECT_FALSE(anyMutable(back));
}

TEST(PlistCodec, DateFractionsSurviveBinaryToTheMicrosecond) {
    for (double seconds :
         {kInstant + 0.25, kInstant + 0.000001, -0.5, -1e6 - 0.75, 978307199.5, 978307200.999999}) {
        Value back = roundTrip(Value::makeDate(seconds), Format::Binary);
        ASSERT_TRUE(back.isDate());
        EXPECT_NEAR(back.dateSeconds(), seconds, 1e-6) << seconds;
    }
}

// The XML date form has whole seconds only: a fraction is dropped (rounded down, so a date
// just before a second stays in that second).
TEST(PlistCodec, XmlDatesKeepWholeSeconds) {
    Value back = roundTrip(Value::makeDate(kInstant + 0.75), Format::Xml);
    ASSERT_TRUE(back.isDate());
    EXPECT_EQ(back.dateSeconds(), kInstant);
    back = roundTrip(Value::makeDate(-0.25), Format::Xml);
    EXPECT_EQ(back.dateSeconds(), -1);
    back = roundTrip(Value::makeDate(kInstant - 1e-9), Format::Xml);
    EXPECT_EQ(back.dateSeconds(), kInstant) << "a fraction that rounds to a whole second";
}

// Dates are stored as 32-bit seconds around 2001, so values beyond 1933-2069 are clamped.
TEST(PlistCodec, DatesOutsideTheStorableRangeAreClamped) {
    constexpr double since2001 = 978307200;
    Value far = roundTrip(Value::makeDate(1e12), Format::Binary);
    ASSERT_TRUE(far.isDate());
    EXPECT_EQ(far.dateSeconds(), since2001 + std::numeric_limits<std::int32_t>::max());
    Value early = roundTrip(Value::makeDate(-1e12), Format::Xml);
    ASSERT_TRUE(early.isDate());
    EXPECT_EQ(early.dateSeconds(), since2001 + std::numeric_limits<std::int32_t>::min());
}

// libplist 2.2 takes strings and keys as C strings: text after a zero byte is lost. (Its
// integers are also read without a sign flag, so one above 2^63 - 1 written by another program
// would come back negative.)
TEST(PlistCodec, TextEndsAtAZeroByte) {
    Value tree = Value::makeDictionary({{std::string("k\0ey", 4), std::string("a\0b", 3)}});
    for (Format format : {Format::Xml, Format::Binary})
        expectSameTree(Value::makeDictionary({{"k", "a"}}), roundTrip(tree, format));
}

TEST(PlistCodec, NullValuesAreLeftOutOnWrite) {
    Value tree = Value::makeDictionary(
        {{"keep", 1}, {"drop", Value::null()}, {"list", Value::makeArray({1, Value::null(), 2})}});
    for (Format format : {Format::Xml, Format::Binary}) {
        Value back = roundTrip(tree, format);
        expectSameTree(Value::makeDictionary({{"keep", 1}, {"list", Value::makeArray({1, 2})}}),
                       back);
    }
    EXPECT_TRUE(serialize(Value::null()).isError());
    EXPECT_TRUE(serialize(Value()).isError());
}

TEST(PlistCodec, ScalarRootsRoundTrip) {
    for (Format format : {Format::Xml, Format::Binary}) {
        expectSameTree(Value("only"), roundTrip(Value("only"), format));
        expectSameTree(Value(-7), roundTrip(Value(-7), format));
        expectSameTree(Value(false), roundTrip(Value(false), format));
    }
}

TEST(PlistCodec, ReadsPlainXmlWrittenByHand) {
    std::string xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
  <key>name</key><string>Copy &amp; Paste</string>
  <key>count</key><integer>-3</integer>
  <key>ratio</key><real>2.5</real>
  <key>on</key><true/>
  <key>when</key><date>2024-02-03T04:05:06Z</date>
  <key>blob</key><data>AAEC</data>
  <key>list</key><array><string>a</string><dict/></array>
</dict></plist>)";
    auto parsed = parse(xml);
    ASSERT_FALSE(parsed.isError()) << parsed.error().message;
    expectSameTree(
        Value::makeDictionary({{"name", "Copy & Paste"},
                               {"count", -3},
                               {"ratio", 2.5},
                               {"on", true},
                               {"when", Value::makeDate(kInstant)},
                               {"blob", Value::makeData({0, 1, 2})},
                               {"list", Value::makeArray({"a", Value::makeDictionary()})}}),
        parsed.value());
}

TEST(PlistCodec, DatesDoNotDependOnTheLocalTimeZone) {
    Value date = Value::makeDate(kInstant);
    {
        px::test::ScopedEnv zone("TZ", "Asia/Kolkata");
        tzset();
        for (Format format : {Format::Xml, Format::Binary})
            expectSameTree(date, roundTrip(date, format));
    }
    tzset();
}

TEST(PlistCodec, BrokenInputGivesAnErrorNotACrash) {
    for (const char* text : {"", "hello", "<plist>", "<?xml version=\"1.0\"?><plist><dict><key>a",
                             "bplist00", "bplist00\xff\xff\xff\xff\xff\xff\xff\xff"}) {
        auto parsed = parse(std::string_view(text));
        EXPECT_TRUE(parsed.isError()) << text;
        if (parsed.isError()) {
            EXPECT_FALSE(parsed.error().message.empty());
        }
    }
}

// A cut file is refused, never read as part of its data. (The XML reader does accept a file
// whose cut falls in the closing tags after the root, which has lost nothing.)
TEST(PlistCodec, TruncatedFilesAreRefusedOrComplete) {
    Value tree = sampleTree();
    for (Format format : {Format::Xml, Format::Binary}) {
        auto whole = serialize(tree, format);
        ASSERT_FALSE(whole.isError());
        const std::string& bytes = whole.value();
        std::size_t refused = 0;
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            auto parsed = parse(std::string_view(bytes).substr(0, length));
            if (parsed.isError()) {
                ++refused;
                continue;
            }
            SCOPED_TRACE(testing::Message() << "format " << int(format) << ", " << length);
            expectSameTree(tree, parsed.value());
        }
        EXPECT_GT(refused, bytes.size() - 20);
    }
}

TEST(PlistCodec, CorruptedBinaryBytesNeverCrash) {
    auto whole = serialize(sampleTree(), Format::Binary);
    ASSERT_FALSE(whole.isError());
    std::string bytes = whole.value();
    // Flip every byte in turn; the result may parse or not, but must come back as a value.
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(~damaged[at]);
        auto parsed = parse(damaged);
        if (!parsed.isError()) {
            EXPECT_FALSE(parsed.value().isAbsent());
        }
    }
}

namespace {

std::string nestedXml(int depth) {
    std::string xml = "<plist version=\"1.0\">";
    for (int i = 0; i < depth; ++i)
        xml += "<array>";
    xml += "<string>bottom</string>";
    for (int i = 0; i < depth; ++i)
        xml += "</array>";
    return xml + "</plist>";
}

void appendBigEndian(std::string& out, std::uint64_t value, int size) {
    for (int shift = (size - 1) * 8; shift >= 0; shift -= 8)
        out += static_cast<char>((value >> shift) & 0xFF);
}

// A binary property list of `depth` arrays, each holding the next; with `cycle` the innermost
// holds the outermost instead, a loop no writer makes.
std::string nestedBinary(std::uint32_t depth, bool cycle = false) {
    std::string out = "bplist00", table;
    for (std::uint32_t i = 0; i < depth; ++i) {
        appendBigEndian(table, out.size(), 4);
        bool innermost = i + 1 == depth;
        out += static_cast<char>(innermost && !cycle ? 0xA0 : 0xA1);
        if (!innermost || cycle) appendBigEndian(out, innermost ? 0 : i + 1, 4);
    }
    std::uint64_t tableOffset = out.size();
    out += table + std::string(6, '\0') + "\x04\x04";
    appendBigEndian(out, depth, 8);
    appendBigEndian(out, 0, 8);
    appendBigEndian(out, tableOffset, 8);
    return out;
}

} // namespace

TEST(PlistCodec, NestingPastTheLimitIsRefusedWhole) {
    auto fine = parse(nestedXml(500));
    ASSERT_FALSE(fine.isError()) << fine.error().message;
    Value inner = fine.value();
    for (int i = 0; i < 500 && inner.isArray(); ++i)
        inner = inner.array().at(0);
    EXPECT_EQ(inner, Value("bottom"));

    for (int depth : {600, 300000}) {
        auto deep = parse(nestedXml(depth));
        ASSERT_TRUE(deep.isError()) << depth << " levels must not lose their bottom silently";
        EXPECT_EQ(deep.error().message, "the property list is nested too deeply");
    }
}

TEST(PlistCodec, TagsInCommentsAndTextDoNotCountAsNesting) {
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "<array>";
    std::string xml = "<plist version=\"1.0\"><!-- " + many + " --><array><array/><dict/>" +
                      "<string><![CDATA[" + many + "]]></string></array></plist>";
    auto parsed = parse(xml);
    ASSERT_FALSE(parsed.isError()) << parsed.error().message;
    ASSERT_EQ(parsed.value().array().size(), 3u);
    EXPECT_EQ(parsed.value().array()[2], Value(many));
}

TEST(PlistCodec, DeepOrLoopingBinaryFilesAreRefused) {
    auto fine = parse(nestedBinary(100));
    ASSERT_FALSE(fine.isError()) << fine.error().message;
    EXPECT_TRUE(fine.value().isArray());
    for (std::uint32_t depth : {600u, 200000u})
        EXPECT_TRUE(parse(nestedBinary(depth)).isError()) << depth;
    EXPECT_TRUE(parse(nestedBinary(3, true)).isError());
}

TEST(PlistCodec, WritesOnlyWhatItCouldReadBack) {
    Value shallow = Value("leaf");
    for (int i = 0; i < 512; ++i)
        shallow = Value::makeArray({shallow});
    auto written = serialize(shallow, Format::Binary);
    ASSERT_FALSE(written.isError());
    EXPECT_FALSE(parse(written.value()).isError());

    Value deep = Value::makeDictionary({{"k", shallow}});
    EXPECT_TRUE(serialize(deep, Format::Xml).isError());
    EXPECT_TRUE(serialize(deep, Format::Binary).isError());
}

TEST(PlistCodec, FilesAreWrittenWholeAndReadBack) {
    px::test::TempDir dir;
    std::string path = dir / "settings.plist";
    Value tree = sampleTree();
    ASSERT_FALSE(writeFileAtomically(path, tree).isError());
    auto back = readFile(path);
    ASSERT_FALSE(back.isError()) << back.error().message;
    expectSameTree(tree, back.value());

    ASSERT_FALSE(writeFileAtomically(path, Value("replaced"), Format::Binary).isError());
    back = readFile(path);
    ASSERT_FALSE(back.isError());
    EXPECT_EQ(back.value(), Value("replaced"));
}

TEST(PlistCodec, FileErrorsAreValues) {
    px::test::TempDir dir;
    EXPECT_TRUE(readFile(dir / "missing.plist").isError());
    EXPECT_TRUE(writeFileAtomically(dir / "no/such/folder/x.plist", Value(1)).isError());
    std::string broken = dir.write("broken.plist", "<plist><dict><key>a</key>");
    EXPECT_TRUE(readFile(broken).isError());
    EXPECT_EQ(px::test::readFile(broken), "<plist><dict><key>a</key>") << "left as it was";
}

// A hand-edited file with a raw zero byte inside a string once aborted the reader.
TEST(PlistCodec, RawZeroByteInXmlTextEndsTheText) {
    const char xml[] = "<plist><dict><key>k</key><string>Cut\0 Paste</string></dict></plist>";
    auto parsed = parse(std::string_view(xml, sizeof xml - 1));
    ASSERT_FALSE(parsed.isError());
    expectSameTree(Value::makeDictionary({{"k", "Cut"}}), parsed.value());
}

namespace {

// A binary property list holding one dictionary whose only key is the given UTF-16 text.
std::string binaryWithUtf16Key(const std::u16string& key) {
    std::string bytes = "bplist00";
    bytes += {'\xd1', '\x01', '\x02'};
    bytes += static_cast<char>(0x60 | key.size());
    for (char16_t unit : key) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit & 0xff);
    }
    const auto value = static_cast<char>(bytes.size());
    bytes += {'\x51', 'x'};
    const auto table = static_cast<char>(bytes.size());
    bytes += {'\x08', '\x0b', value};
    bytes += std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') + '\x03';
    bytes += std::string(15, '\0') + table;
    return bytes;
}

} // namespace

// libplist aborts the process on a UTF-16 key holding a zero character; such a file is refused.
TEST(PlistCodec, BinaryKeysWithAZeroCharacterAreRefused) {
    auto plain = parse(binaryWithUtf16Key(u"\u00e9t\u00e9"));
    ASSERT_FALSE(plain.isError()) << plain.error().message;
    expectSameTree(Value::makeDictionary({{"\u00e9t\u00e9", "x"}}), plain.value());
    for (const std::u16string& key :
         {std::u16string(u"\0\u00e9", 2), std::u16string(u"\u00e9\0", 2)})
        EXPECT_TRUE(parse(binaryWithUtf16Key(key)).isError());
}
