#include "config/Expand.h"

#include <gtest/gtest.h>

using namespace px::expand;
using px::plist::Value;

namespace {

Value dictOf(px::plist::Dictionary entries) {
    return Value::makeDictionary(std::move(entries));
}

TEST(ObjectAtPath, SeparatorsFallbacksAndDeadEnds) {
    Value b = dictOf({{"c", 1}, {"d", dictOf({})}});
    Value dict = dictOf({{"a", dictOf({{"b", b}, {"n", 5}, {"nil", Value::null()}})}, {"a.b", 2}});
    for (const char* path : {"a.b.c", "a/b/c", "a.b/c", "//a//b/c"})
        EXPECT_EQ(objectAtPath(dict, path), Value(1)) << path;
    EXPECT_EQ(objectAtPath(dict, "a.b", "fallback", Separator("/")), Value(2));
    EXPECT_TRUE(objectAtPath(dict, "a/b/d/").sameObject(b.get("d")));
    for (const char* path : {"a/n/", "a/n/b", "a/zz", "", "/", ".."})
        EXPECT_TRUE(objectAtPath(dict, path).isAbsent()) << path;
    EXPECT_TRUE(objectAtPath(dict, "a/nil", Value("fallback")).isNull()) << "null is a value";
    EXPECT_EQ(stringAtPath(dict, "a/zz", "fallback"), "fallback");
    EXPECT_FALSE(boolAtPath(dict, "a/nil", true)) << "null is false whatever the fallback";
}

TEST(SetObjectAtPath, WritesThroughCopiesNeverIntoASharedOriginalAndRefusesDeadEnds) {
    Value shared = dictOf({{"keep", 1}});
    Value dict = Value::makeMutableDictionary({{"s", shared}, {"x", "text"}});
    EXPECT_TRUE(setObjectAtPath(dict, 2, "s/new"));
    EXPECT_TRUE(setObjectAtPath(dict, "v", "p.q"));
    EXPECT_TRUE(shared.get("new").isAbsent());
    EXPECT_FALSE(setObjectAtPath(dict, 1, "x/y"));
    EXPECT_FALSE(setObjectAtPath(dict, 1, ""));
    EXPECT_FALSE(setObjectAtPath(dict, Value(), "absent"));
    EXPECT_FALSE(setObjectAtPath(shared, 1, "k")) << "an immutable receiver";
    EXPECT_EQ(dict, dictOf({{"s", dictOf({{"keep", 1}, {"new", 2}})},
                            {"p", dictOf({{"q", "v"}})},
                            {"x", "text"}}));
    Value copy = mutableDeepCopy(dict);
    EXPECT_TRUE(setObjectAtPath(copy, 3, "s/new"));
    EXPECT_EQ(objectAtPath(dict, "s/new"), Value(2));
}

} // namespace
