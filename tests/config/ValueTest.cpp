#include "config/Value.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using px::plist::Type;
using px::plist::Value;

TEST(Value, CopiesShareOneMutableContainerAndImmutableOnesRefuseWrites) {
    Value dict = Value::makeMutableDictionary();
    Value alias = dict;
    EXPECT_TRUE(alias.set("k", 1));
    EXPECT_EQ(dict.get("k"), Value(1));
    EXPECT_TRUE(dict.remove("k"));
    EXPECT_TRUE(alias.get("k").isAbsent());
    EXPECT_FALSE(dict.remove("k"));

    Value frozen = Value::makeDictionary({{"k", 1}});
    EXPECT_FALSE(frozen.set("k", 2));
    EXPECT_FALSE(frozen.remove("k"));
    EXPECT_EQ(frozen.get("k"), Value(1));
}

TEST(Value, CopiesSnapshotOrDetachAsTheirKindSays) {
    Value inner = Value::makeMutableArray({1});
    Value dict = Value::makeMutableDictionary({{"list", inner}});

    Value snapshot = dict.copy();
    EXPECT_FALSE(snapshot.isMutable());
    Value detached = dict.mutableCopy();
    detached.set("extra", true);
    EXPECT_TRUE(dict.get("extra").isAbsent());
    EXPECT_TRUE(detached.get("list").sameObject(inner)) << "a mutable copy is one level deep";

    Value frozen = dict.frozen();
    EXPECT_FALSE(frozen.isMutable());
    EXPECT_FALSE(frozen.get("list").isMutable());
    EXPECT_EQ(frozen.get("list"), inner);
    inner.mutableArray().push_back(2);
    EXPECT_EQ(frozen.get("list").array().size(), 1u);
}

TEST(Value, NothingAndNullAreDifferent) {
    Value nothing;
    EXPECT_TRUE(nothing.isAbsent());
    EXPECT_FALSE(nothing.isNull());
    EXPECT_TRUE(Value::null().isNull());
    EXPECT_NE(nothing, Value::null());
    EXPECT_EQ(Value::null(), Value::null());
    EXPECT_TRUE(Value(5).get("k").isAbsent());
    EXPECT_EQ(nothing.description(), "(null)");
    EXPECT_EQ(Value::null().description(), "<null>");
}

TEST(Value, NumbersCompareAcrossTheirKindsAndLargeIntegersExactly) {
    EXPECT_EQ(Value(1), Value(1.0));
    EXPECT_EQ(Value(true), Value(1));
    EXPECT_NE(Value(1), Value("1"));
    constexpr std::int64_t big = (std::int64_t{1} << 53);
    EXPECT_NE(Value(big), Value(big + 1));
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::max()),
              Value(std::numeric_limits<std::int64_t>::max()));
}

TEST(Value, RealsReadAsIntegersTowardZeroAndSaturate) {
    EXPECT_EQ(Value(3.9).integer(), 3);
    EXPECT_EQ(Value(-3.9).integer(), -3);
    EXPECT_EQ(Value(1e300).integer(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(-1e300).integer(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Value(std::nan("")).integer(), 0);
    EXPECT_TRUE(Value(0.5).boolean());
    EXPECT_FALSE(Value(0.0).boolean());
}

TEST(Value, ContainersCompareByContentWhateverTheirMutability) {
    Value a = Value::makeDictionary({{"x", Value::makeArray({1, "two"})}});
    Value b = Value::makeMutableDictionary({{"x", Value::makeMutableArray({1.0, "two"})}});
    EXPECT_EQ(a, b);
    b.get("x").mutableArray().push_back(Value::null());
    EXPECT_NE(a, b);
}

TEST(Value, DescriptionsReadLikeThePlatformsText) {
    EXPECT_EQ(Value(3.5).description(), "3.5");
    EXPECT_EQ(Value(3.0).description(), "3");
    EXPECT_EQ(Value(true).description(), "1");
    EXPECT_EQ(Value::makeDate(1706933106.25).description(), "2024-02-03 04:05:06 +0000");
    EXPECT_EQ(Value::makeDate(-1).description(), "1969-12-31 23:59:59 +0000");
    EXPECT_EQ(Value::makeData({0x00, 0xff}).description(), "{length = 2, bytes = 0x00ff}");
    Value nested = Value::makeDictionary({{"a", Value::makeArray({1, "b"})}});
    EXPECT_EQ(nested.description(), "{a = (1, b); }");
}
