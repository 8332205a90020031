#include "plist/PlistCodec.h"

#include "support_files/TestSupport.h"

#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace px::plist;

namespace {

constexpr double kInstant = 1706933106; // 2024-02-03 04:05:06 UTC
constexpr Format kFormats[] = {Format::Xml, Format::Binary};

// Value's == treats true, 1 and 1.0 as equal; a round trip must keep the kind of every value
// too, and read containers back immutable.
void expectSameTree(const Value& expected, const Value& actual, const std::string& where = "/") {
    ASSERT_EQ(expected.type(), actual.type()) << where << ": " << actual.description();
    EXPECT_FALSE(actual.isMutable()) << where;
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

// Every kind with the values that trouble writers: signs, extremes, fractions, scripts, zero
// bytes, nesting and empty containers.
Value sampleTree() {
    Bytes everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte.push_back(static_cast<std::uint8_t>(255 - i));
    Array numbers{true,
                  false,
                  0,
                  -1,
                  std::numeric_limits<std::int64_t>::min(),
                  std::numeric_limits<std::int64_t>::max(),
                  1.0 / 3,
                  -2.5e-10,
                  1e300,
                  3.0};
    Array texts{"", "Привет мир", "日本語", "😀 🎉", "<&>\"'", "  padded \n", "tab\there"};
    Array dates{Value::makeDate(kInstant), Value::makeDate(-86400 * 365)};
    Array data{Value::makeData({}), Value::makeData({0, 0, 1, 0}), Value::makeData(everyByte)};
    Value deeper = Value::makeArray({Value::makeArray({Value::makeDictionary({{"leaf", "end"}})})});
    return Value::makeMutableDictionary(
        {{"numbers", Value::makeArray(numbers)},
         {"texts", Value::makeMutableArray(texts)},
         {"dates", Value::makeArray(dates)},
         {"data", Value::makeArray(data)},
         {"nested", Value::makeDictionary({{"deeper", deeper},
                                           {"emptyArray", Value::makeArray()},
                                           {"emptyDict", Value::makeDictionary()}})},
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

TEST(PlistCodec, RoundTripKeepsEveryKindAndValueInAnyTimeZone) {
    {
        px::test::ScopedEnv zone("TZ", "Asia/Kolkata");
        tzset();
        for (Format format : kFormats)
            expectSameTree(sampleTree(), roundTrip(sampleTree(), format));
    }
    tzset();
}

// libplist takes strings as C strings: text after a zero byte is lost, never misread.
TEST(PlistCodec, TextEndsAtAZeroByteAndNullsAreLeftOut) {
    Value tree = Value::makeDictionary({{std::string("k\0ey", 4), std::string("a\0b", 3)},
                                        {"drop", Value::null()},
                                        {"list", Value::makeArray({1, Value::null(), 2})}});
    Value expected = Value::makeDictionary({{"k", "a"}, {"list", Value::makeArray({1, 2})}});
    for (Format format : kFormats)
        expectSameTree(expected, roundTrip(tree, format));
    EXPECT_TRUE(serialize(Value::null()).isError());
    const char xml[] = "<plist><dict><key>k</key><string>Cut\0 Paste</string></dict></plist>";
    auto parsed = parse(std::string_view(xml, sizeof xml - 1));
    ASSERT_FALSE(parsed.isError());
    expectSameTree(Value::makeDictionary({{"k", "Cut"}}), parsed.value());
}

// Broken, cut and damaged files are refused with a message, or read whole; never a crash. (The
// XML reader accepts a cut in the closing tags after the root, which has lost nothing.)
TEST(PlistCodec, BrokenCutOrDamagedInputIsRefusedOrReadWhole) {
    for (const char* text : {"", "hello", "<plist>", "<plist><dict><key>a", "bplist00",
                             "bplist00\xff\xff\xff\xff\xff\xff\xff\xff"}) {
        auto parsed = parse(std::string_view(text));
        ASSERT_TRUE(parsed.isError()) << text;
        EXPECT_FALSE(parsed.error().message.empty());
    }
    for (Format format : kFormats) {
        const std::string bytes = serialize(sampleTree(), format).value();
        std::size_t refused = 0;
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            auto parsed = parse(std::string_view(bytes).substr(0, length));
            if (parsed.isError()) {
                ++refused;
                continue;
            }
            SCOPED_TRACE(testing::Message() << "format " << int(format) << ", " << length);
            expectSameTree(sampleTree(), parsed.value());
        }
        EXPECT_GT(refused, bytes.size() - 20);
    }
    std::string bytes = serialize(sampleTree(), Format::Binary).value();
    for (char& byte : bytes) {
        byte = static_cast<char>(~byte);
        auto parsed = parse(bytes);
        EXPECT_TRUE(parsed.isError() || !parsed.value().isAbsent());
        byte = static_cast<char>(~byte);
    }
}

std::string nestedXml(int depth, const std::string& bottom = "<string>bottom</string>") {
    std::string open, close;
    for (int i = 0; i < depth; ++i) {
        open += "<array>";
        close += "</array>";
    }
    return "<plist version=\"1.0\">" + open + bottom + close + "</plist>";
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

TEST(PlistCodec, NestingPastTheLimitOrLoopsAreRefusedWhole) {
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
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "<array>";
    auto text =
        parse(nestedXml(1, "<!-- " + many + " --><string><![CDATA[" + many + "]]></string>"));
    ASSERT_FALSE(text.isError()) << "tags in comments and text are no nesting";
    EXPECT_EQ(text.value().array()[0], Value(many));

    EXPECT_FALSE(parse(nestedBinary(100)).isError());
    for (std::uint32_t depth : {600u, 200000u})
        EXPECT_TRUE(parse(nestedBinary(depth)).isError()) << depth;
    EXPECT_TRUE(parse(nestedBinary(3, true)).isError());

    Value shallow = Value("leaf"); // writes only what it could read back
    for (int i = 0; i < 512; ++i)
        shallow = Value::makeArray({shallow});
    EXPECT_FALSE(parse(serialize(shallow, Format::Binary).value()).isError());
    for (Format format : kFormats)
        EXPECT_TRUE(serialize(Value::makeDictionary({{"k", shallow}}), format).isError());
}

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

// libplist aborts the process on a UTF-16 key holding a zero character; such a file is refused.
TEST(PlistCodec, BinaryKeysWithAZeroCharacterAreRefused) {
    auto plain = parse(binaryWithUtf16Key(u"\u00e9t\u00e9"));
    ASSERT_FALSE(plain.isError()) << plain.error().message;
    expectSameTree(Value::makeDictionary({{"\u00e9t\u00e9", "x"}}), plain.value());
    for (const std::u16string& key :
         {std::u16string(u"\0\u00e9", 2), std::u16string(u"\u00e9\0", 2)})
        EXPECT_TRUE(parse(binaryWithUtf16Key(key)).isError());
}

} // namespace
