#include "config/Coercions.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace px::expand;
using px::plist::Type;
using px::plist::Value;

namespace {

// 2024-02-03 04:05:06 UTC and that day's midnight.
constexpr double kInstant = 1706933106;
constexpr double kMidnight = 1706918400;

double dateOf(const Value& value) {
    EXPECT_TRUE(value.isDate()) << value.description();
    return value.isDate() ? value.dateSeconds() : std::nan("");
}

} // namespace

TEST(AsNSNumber, StringsReadTheirLeadingIntegerUnlikeNumberAtPath) {
    EXPECT_EQ(asNSNumber("3.7"), Value(3));
    EXPECT_TRUE(asNSNumber("3.7").is(Type::Integer));
    EXPECT_EQ(asNSNumber("abc"), Value(0));
    EXPECT_EQ(asNSNumber("  -12kg"), Value(-12));
    EXPECT_EQ(asNSNumber("+8"), Value(8));
    EXPECT_EQ(asNSNumber("99999999999999999999"), Value(std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(asNSNumber("-9223372036854775808"), Value(std::numeric_limits<std::int64_t>::min()));
}

TEST(AsNSNumber, OtherKinds) {
    Value number = 2.5;
    EXPECT_TRUE(asNSNumber(number).sameObject(number));
    EXPECT_EQ(asNSNumber(Value::makeDate(1.25)), Value(1.25));
    EXPECT_EQ(asNSNumber(Value::null()), Value(0));
    EXPECT_TRUE(asNSNumber(Value::makeData({'1'})).isAbsent());
    EXPECT_TRUE(asNSNumber(Value::makeArray({1})).isAbsent());
    EXPECT_TRUE(asNSNumber(Value()).isAbsent());
}

TEST(AsScalar, IntegerFloatAndBoolReadTheNumber) {
    EXPECT_EQ(asInteger("3.7"), 3);
    EXPECT_EQ(asInteger(-3.7), -3);
    EXPECT_EQ(asInteger(1e300), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(asInteger(Value::makeDate(10.9)), 10);
    EXPECT_EQ(asInteger(Value()), 0);
    EXPECT_FLOAT_EQ(asFloat(0.1), 0.1f);
    EXPECT_FLOAT_EQ(asFloat("2.9"), 2.0f);
    EXPECT_FLOAT_EQ(asFloat(Value::makeArray()), 0.0f);
    EXPECT_TRUE(asBool(0.5));
    EXPECT_TRUE(asBool("7"));
    EXPECT_FALSE(asBool("yes")) << "a word has no leading integer";
    EXPECT_FALSE(asBool(Value::null()));
    EXPECT_FALSE(asBool(Value()));
}

TEST(AsNSString, TextOfEachKind) {
    EXPECT_EQ(asNSString(Value::null()), std::nullopt);
    EXPECT_EQ(asNSString(Value()), std::nullopt);
    EXPECT_EQ(asNSString("as is"), "as is");
    EXPECT_EQ(asNSString(3.5), "3.5");
    EXPECT_EQ(asNSString(42), "42");
    EXPECT_EQ(asNSString(true), "1");
    EXPECT_EQ(asNSString(Value::makeDate(kInstant)), "2024-02-03 04:05:06 +0000");
    EXPECT_EQ(asNSString(Value::makeArray({1, "a"})), "(1, a)");
}

TEST(AsNSString, DataIsUtf8OrOneCharacterPerByte) {
    std::string text = "Привет 日本 😀";
    EXPECT_EQ(asNSString(Value::makeData(px::plist::Bytes(text.begin(), text.end()))), text);
    EXPECT_EQ(asNSString(Value::makeData({})), "");
    EXPECT_EQ(asNSString(Value::makeData({'a', 0, 'b'})), std::string("a\0b", 3));
    EXPECT_EQ(asNSString(Value::makeData({'A', 0xFF})), "A\u00FF");
    EXPECT_EQ(asNSString(Value::makeData({0xC3})), "\u00C3") << "a cut sequence";
    EXPECT_EQ(asNSString(Value::makeData({0xC0, 0xAF})), "\u00C0\u00AF") << "overlong";
    EXPECT_EQ(asNSString(Value::makeData({0xED, 0xA0, 0x80})), "\u00ED\u00A0\u0080")
        << "a surrogate";
}

TEST(AsNSDate, ReadsTheThreeFormatsInUtc) {
    EXPECT_EQ(dateOf(asNSDate("2024-02-03 04:05:06")), kInstant);
    EXPECT_EQ(dateOf(asNSDate("2024/02/03 04:05:06")), kInstant);
    EXPECT_EQ(dateOf(asNSDate("2024-02-03")), kMidnight);
    EXPECT_EQ(dateOf(asNSDate("1969-12-31 23:59:59")), -1);
    EXPECT_EQ(dateOf(asNSDate("2024-02-29")), 1709164800) << "a leap day";
}

TEST(AsNSDate, TextMustMatchAFormatWhole) {
    for (const char* text :
         {"2024/02/03", "2024-02-03 04:05", "2024-02-03 04:05:06 +0000", "2024-02-03T04:05:06",
          " 2024-02-03", "2024-2-3", "2023-02-29", "2024-13-01", "2024-02-03 24:00:00",
          "2024-02-03 10:60:00", "", "yesterday", "２０２４-02-03"})
        EXPECT_TRUE(asNSDate(text).isAbsent()) << text;
}

TEST(AsNSDate, OtherValuesCountSecondsSince1970) {
    Value date = Value::makeDate(5);
    EXPECT_TRUE(asNSDate(date).sameObject(date));
    EXPECT_EQ(dateOf(asNSDate(86400.5)), 86400.5);
    EXPECT_EQ(dateOf(asNSDate(Value::makeArray({1}))), 0) << "unconvertible gives 1970";
    EXPECT_EQ(dateOf(asNSDate(Value::null())), 0);
    EXPECT_TRUE(asNSDate(Value()).isAbsent());
}

TEST(AsNSData, StringsGiveTheirBytesDataStays) {
    EXPECT_EQ(asNSData("é"), Value::makeData({0xC3, 0xA9}));
    Value data = Value::makeData({0, 1});
    EXPECT_TRUE(asNSData(data).sameObject(data));
    EXPECT_TRUE(asNSData(5).isAbsent());
    EXPECT_TRUE(asNSData(Value::null()).isAbsent());
}

TEST(AsContainer, ArraysWrapDictionariesDoNot) {
    Value list = Value::makeArray({1});
    EXPECT_TRUE(asNSArray(list).sameObject(list));
    EXPECT_EQ(asNSArray("one"), Value::makeArray({"one"}));
    EXPECT_EQ(asNSArray(Value::null()), Value::makeArray({Value::null()}));
    EXPECT_TRUE(asNSArray(Value()).isAbsent());

    Value open = Value::makeMutableArray();
    EXPECT_TRUE(asNSMutableArray(open).sameObject(open));
    EXPECT_TRUE(asNSMutableArray(list).isAbsent()) << "no conversion";

    Value fixed = Value::makeDictionary({{"k", 1}});
    EXPECT_TRUE(asNSDictionary(fixed).sameObject(fixed));
    EXPECT_TRUE(asNSDictionary(list).isAbsent());
    Value copy = asNSMutableDictionary(fixed);
    EXPECT_TRUE(copy.isMutable());
    EXPECT_TRUE(copy.set("k", 2));
    EXPECT_EQ(fixed.get("k"), Value(1));
    Value mutableDict = Value::makeMutableDictionary();
    EXPECT_TRUE(asNSMutableDictionary(mutableDict).sameObject(mutableDict));
    EXPECT_TRUE(asNSMutableDictionary("k").isAbsent());
}

TEST(LeadingNumbers, ReadThePrefixAfterBlanks) {
    EXPECT_EQ(leadingInteger("\t 42abc"), 42);
    EXPECT_EQ(leadingInteger("-"), 0);
    EXPECT_EQ(leadingInteger("--1"), 0);
    EXPECT_EQ(leadingInteger("\n5"), 0) << "a line break is not a blank";
    EXPECT_DOUBLE_EQ(leadingReal(" 3.5kg"), 3.5);
    EXPECT_DOUBLE_EQ(leadingReal("+.25"), 0.25);
    EXPECT_DOUBLE_EQ(leadingReal("-1e3"), -1000);
    EXPECT_DOUBLE_EQ(leadingReal("+-1"), 0);
    EXPECT_DOUBLE_EQ(leadingReal("x1"), 0);
}
