#include "config/Value.h"

#include <gtest/gtest.h>

using px::plist::Value;

TEST(Value, CopiesShareOneMutableDictionary) {
    Value dict = Value::makeMutableDictionary();
    Value alias = dict;
    EXPECT_TRUE(alias.set("k", 1));
    EXPECT_EQ(dict.get("k"), Value(1));
    EXPECT_FALSE(Value::makeDictionary().set("k", 1));
}
