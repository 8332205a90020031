#include "plist/Value.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using px::plist::Value;

TEST(Value, CopiesShareOneMutableContainerAndImmutableOnesRefuseWrites) {
    Value dict = Value::makeMutableDictionary();
    Value alias = dict;
    EXPECT_TRUE(alias.set("k", 1));
    EXPECT_EQ(dict.get("k"), Value(1));
    Value frozen = Value::makeDictionary({{"k", 1}});
    EXPECT_FALSE(frozen.set("k", 2));
    EXPECT_FALSE(frozen.remove("k"));
    EXPECT_EQ(frozen.get("k"), Value(1));
}

TEST(Value, CopiesSnapshotOrDetachAsTheirKindSays) {
    Value inner = Value::makeMutableArray({1});
    Value dict = Value::makeMutableDictionary({{"list", inner}});
    Value detached = dict.mutableCopy();
    detached.set("extra", true);
    EXPECT_TRUE(dict.get("extra").isAbsent());
    EXPECT_TRUE(detached.get("list").sameObject(inner)) << "a mutable copy is one level deep";
    Value frozen = dict.frozen();
    inner.mutableArray().push_back(2);
    EXPECT_FALSE(frozen.get("list").isMutable());
    EXPECT_EQ(frozen.get("list").array().size(), 1u);
}

TEST(Value, ComparisonAcrossKindsAndExactLargeIntegers) {
    EXPECT_EQ(Value(true), Value(1.0));
    EXPECT_NE(Value(1), Value("1"));
    EXPECT_NE(Value(), Value::null());
    constexpr std::int64_t big = (std::int64_t{1} << 53);
    EXPECT_NE(Value(big), Value(big + 1));
    Value a = Value::makeDictionary({{"x", Value::makeArray({1, "two"})}});
    Value b = Value::makeMutableDictionary({{"x", Value::makeMutableArray({1.0, "two"})}});
    EXPECT_EQ(a, b);
    b.get("x").mutableArray().push_back(Value::null());
    EXPECT_NE(a, b);
}

TEST(Value, RealsReadAsIntegersTowardZeroAndSaturate) {
    EXPECT_EQ(Value(-3.9).integer(), -3);
    EXPECT_EQ(Value(1e300).integer(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(-1e300).integer(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Value(std::nan("")).integer(), 0);
}
