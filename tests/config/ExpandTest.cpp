#include "config/Expand.h"

#include <gtest/gtest.h>

using namespace px::expand;
using px::plist::Value;

namespace {

Value dictOf(px::plist::Dictionary entries) {
    return Value::makeDictionary(std::move(entries));
}

// {a: {b: {c: 1, d: {}}, n: 5, nil: null}, "a.b": 2}
Value sample() {
    Value d = dictOf({});
    Value b = dictOf({{"c", 1}, {"d", d}});
    return dictOf({{"a", dictOf({{"b", b}, {"n", 5}, {"nil", Value::null()}})}, {"a.b", 2}});
}

} // namespace

TEST(ObjectAtPath, DotsAndSlashesNameTheSamePlace) {
    Value dict = sample();
    EXPECT_EQ(objectAtPath(dict, "a.b.c"), Value(1));
    EXPECT_EQ(objectAtPath(dict, "a/b/c"), Value(1));
    EXPECT_EQ(objectAtPath(dict, "a.b/c"), Value(1));
    EXPECT_EQ(objectAtPath(dict, "//a//b/c"), Value(1)) << "empty components are skipped";
}

TEST(ObjectAtPath, KeyHoldingADotIsReachableOnlyWithASeparator) {
    Value dict = dictOf({{"a", dictOf({{"b", 1}})}, {"x.y", 2}});
    EXPECT_EQ(objectAtPath(dict, "a.b"), Value(1));
    EXPECT_TRUE(objectAtPath(dict, "x.y").isAbsent());
    EXPECT_EQ(objectAtPath(dict, "x.y", Separator("/")), Value(2));
    EXPECT_EQ(objectAtPath(dict, "a::b", Separator("::")), Value(1));
    EXPECT_EQ(objectAtPath(dict, "x.y", Separator("")), Value(2)) << "no split at all";
}

TEST(ObjectAtPath, TrailingSeparatorNamesTheDictionaryReachedLast) {
    Value dict = sample();
    Value d = objectAtPath(dict, "a/b/d");
    EXPECT_TRUE(objectAtPath(dict, "a/b/d/").sameObject(d));
    EXPECT_TRUE(objectAtPath(dict, "a.b.d.").sameObject(d));
    EXPECT_TRUE(objectAtPath(dict, "a/").sameObject(dict.get("a")));
    EXPECT_TRUE(objectAtPath(dict, "a/n/").isAbsent()) << "5 is no dictionary to end in";
}

TEST(ObjectAtPath, MissingStepsNonDictionariesAndEmptyPathsGiveNothing) {
    Value dict = sample();
    EXPECT_TRUE(objectAtPath(dict, "a/n/b").isAbsent());
    EXPECT_TRUE(objectAtPath(dict, "a/zz").isAbsent());
    EXPECT_TRUE(objectAtPath(dict, "").isAbsent());
    EXPECT_TRUE(objectAtPath(dict, "/").isAbsent());
    EXPECT_TRUE(objectAtPath(dict, "..").isAbsent());
    EXPECT_TRUE(objectAtPath(Value(), "a").isAbsent());
    EXPECT_TRUE(objectAtPath(Value::makeArray({1}), "0").isAbsent());
}

TEST(ObjectAtPath, NullIsAValueAndFallbacksCoverOnlyNothing) {
    Value dict = sample();
    EXPECT_TRUE(objectAtPath(dict, "a/nil").isNull());
    EXPECT_TRUE(objectAtPath(dict, "a/nil", Value("fallback")).isNull());
    EXPECT_EQ(objectAtPath(dict, "a/zz", Value("fallback")), Value("fallback"));
    EXPECT_EQ(objectAtPath(dict, "a.b", "fallback", Separator("/")), Value(2));
    EXPECT_EQ(objectAtPath(dict, "q", "fallback", Separator("/")), Value("fallback"));
}

TEST(BoolAtPath, ReadsNumbersStringsAndNull) {
    Value dict = dictOf({{"no", "no"},
                         {"True", "True"},
                         {"yes", "yes"},
                         {"two", "2"},
                         {"one", "1"},
                         {"empty", ""},
                         {"half", 0.5},
                         {"three", 3},
                         {"flag", true},
                         {"off", false},
                         {"nil", Value::null()},
                         {"list", Value::makeArray()}});
    EXPECT_FALSE(boolAtPath(dict, "no", true));
    EXPECT_TRUE(boolAtPath(dict, "True"));
    EXPECT_TRUE(boolAtPath(dict, "yes"));
    EXPECT_FALSE(boolAtPath(dict, "two", true));
    EXPECT_TRUE(boolAtPath(dict, "one"));
    EXPECT_FALSE(boolAtPath(dict, "empty", true));
    EXPECT_FALSE(boolAtPath(dict, "half", true)) << "the integer part of 0.5 is 0";
    EXPECT_TRUE(boolAtPath(dict, "three"));
    EXPECT_TRUE(boolAtPath(dict, "flag"));
    EXPECT_FALSE(boolAtPath(dict, "off", true));
    EXPECT_FALSE(boolAtPath(dict, "nil", true)) << "null is false whatever the fallback";
    EXPECT_TRUE(boolAtPath(dict, "absent", true));
    EXPECT_FALSE(boolAtPath(dict, "absent"));
    EXPECT_TRUE(boolAtPath(dict, "list", true));
}

TEST(NumberAtPath, StringsReadAsRealsOtherKindsFallBack) {
    Value dict = dictOf({{"text", "3.5"},
                         {"word", "abc"},
                         {"n", 7},
                         {"nil", Value::null()},
                         {"data", Value::makeData({1})}});
    EXPECT_EQ(numberAtPath(dict, "text"), Value(3.5));
    EXPECT_EQ(numberAtPath(dict, "word"), Value(0));
    EXPECT_TRUE(numberAtPath(dict, "n").sameObject(dict.get("n")));
    EXPECT_TRUE(numberAtPath(dict, "nil").isAbsent());
    EXPECT_EQ(numberAtPath(dict, "nil", 9), Value(9));
    EXPECT_EQ(numberAtPath(dict, "data", 9), Value(9));
    EXPECT_EQ(numberAtPath(dict, "absent", 9), Value(9));
}

TEST(StringAtPath, NumbersAreCutTo32BitIntegers) {
    Value dict = dictOf({{"real", 3.9},
                         {"negative", -3.9},
                         {"wide", (std::int64_t{1} << 32) + 5},
                         {"text", "hi"},
                         {"nil", Value::null()},
                         {"list", Value::makeArray()}});
    EXPECT_EQ(stringAtPath(dict, "real"), "3");
    EXPECT_EQ(stringAtPath(dict, "negative"), "-3");
    EXPECT_EQ(stringAtPath(dict, "wide"), "5");
    EXPECT_EQ(stringAtPath(dict, "text"), "hi");
    EXPECT_EQ(stringAtPath(dict, "nil"), std::nullopt);
    EXPECT_EQ(stringAtPath(dict, "list"), std::nullopt);
    EXPECT_EQ(stringAtPath(dict, "nil", "fallback"), "fallback");
    EXPECT_EQ(stringAtPath(dict, "text", "fallback"), "hi");
}

TEST(ContainerAtPath, KindAndMutabilityMustMatch) {
    Value fixedList = Value::makeArray({1});
    Value openList = Value::makeMutableArray({2});
    Value fixedDict = dictOf({});
    Value openDict = Value::makeMutableDictionary();
    Value dict = dictOf({{"fl", fixedList}, {"ol", openList}, {"fd", fixedDict}, {"od", openDict}});
    Value other = Value::makeArray({"fallback"});

    EXPECT_TRUE(arrayAtPath(dict, "fl").sameObject(fixedList));
    EXPECT_TRUE(arrayAtPath(dict, "ol").sameObject(openList));
    EXPECT_TRUE(arrayAtPath(dict, "fd").isAbsent());
    EXPECT_TRUE(mutableArrayAtPath(dict, "fl").isAbsent());
    EXPECT_TRUE(mutableArrayAtPath(dict, "fl", other).sameObject(other));
    EXPECT_TRUE(mutableArrayAtPath(dict, "ol").sameObject(openList));
    EXPECT_TRUE(dictAtPath(dict, "fd").sameObject(fixedDict));
    EXPECT_TRUE(dictAtPath(dict, "fl", other).sameObject(other));
    EXPECT_TRUE(mutableDictAtPath(dict, "fd").isAbsent());
    EXPECT_TRUE(mutableDictAtPath(dict, "od").sameObject(openDict));
}

TEST(ObjectOfAny, FirstPresentPlainKeyWins) {
    Value dict = dictOf({{"b", 2}, {"c", 3}, {"nil", Value::null()}, {"x.y", "dotted"}});
    EXPECT_EQ(objectOfAny(dict, {"a", "b", "c"}), Value(2));
    EXPECT_TRUE(objectOfAny(dict, {"nil", "b"}).isNull()) << "null is present";
    EXPECT_TRUE(objectOfAny(dict, {"a", "z"}).isAbsent());
    EXPECT_EQ(objectOfAny(dict, {"x.y"}), Value("dotted")) << "keys are not paths";
    EXPECT_EQ(stringOfAny(dict, {"a", "c"}), "3");
    EXPECT_EQ(stringOfAny(dict, {"nil", "c"}), std::nullopt);
    EXPECT_EQ(stringOfAny(dict, {}), std::nullopt);
}

TEST(MutableDeepCopy, NestedDictionariesBecomeIndependentAndMutable) {
    Value innerList = Value::makeArray({dictOf({{"k", 1}})});
    Value original = dictOf({{"a", dictOf({{"b", dictOf({{"c", 1}})}})}, {"list", innerList}});
    Value copy = mutableDeepCopy(original);

    ASSERT_TRUE(copy.isMutable());
    EXPECT_EQ(copy, original);
    Value b = objectAtPath(copy, "a/b");
    EXPECT_TRUE(b.isMutable());
    EXPECT_TRUE(setObjectAtPath(copy, 2, "a/b/c"));
    EXPECT_EQ(objectAtPath(original, "a/b/c"), Value(1));

    Value list = copy.get("list");
    EXPECT_TRUE(list.isMutable());
    EXPECT_FALSE(list.sameObject(innerList));
    EXPECT_TRUE(list.array()[0].sameObject(innerList.array()[0])) << "array items are shared";
    EXPECT_EQ(mutableDeepCopy(Value(4)), Value(4));
}

TEST(SetObjectAtPath, MakesMissingStepsAsMutableDictionaries) {
    Value dict = Value::makeMutableDictionary();
    EXPECT_TRUE(setObjectAtPath(dict, "v", "p/q"));
    Value p = dict.get("p");
    ASSERT_TRUE(p.isDictionary());
    EXPECT_TRUE(p.isMutable());
    EXPECT_EQ(p.get("q"), Value("v"));
    EXPECT_TRUE(setObjectAtPath(dict, "w", "p.r"));
    EXPECT_TRUE(dict.get("p").sameObject(p)) << "an existing mutable step is reused";
    EXPECT_EQ(p.get("r"), Value("w"));
}

TEST(SetObjectAtPath, ReplacesImmutableStepsByCopiesLeavingTheSharedOriginal) {
    Value shared = dictOf({{"keep", 1}});
    Value dict = Value::makeMutableDictionary({{"s", shared}});
    EXPECT_TRUE(setObjectAtPath(dict, 2, "s/new"));
    EXPECT_TRUE(shared.get("new").isAbsent());
    EXPECT_FALSE(dict.get("s").sameObject(shared));
    EXPECT_EQ(objectAtPath(dict, "s/keep"), Value(1));
    EXPECT_EQ(objectAtPath(dict, "s/new"), Value(2));
}

TEST(SetObjectAtPath, ANonDictionaryStepRefusesTheWrite) {
    Value dict = Value::makeMutableDictionary({{"x", "text"}});
    Value before = dict.mutableCopy();
    EXPECT_FALSE(setObjectAtPath(dict, 1, "x/y"));
    EXPECT_EQ(dict, before);

    Value fixed = dictOf({{"b", "text"}});
    Value outer = Value::makeMutableDictionary({{"a", fixed}});
    EXPECT_FALSE(setObjectAtPath(outer, 1, "a/b/c"));
    EXPECT_TRUE(outer.get("a").isMutable()) << "the step copied on the way stays";
    EXPECT_EQ(outer.get("a"), fixed);
}

TEST(SetObjectAtPath, EdgePaths) {
    Value dict = Value::makeMutableDictionary();
    EXPECT_FALSE(setObjectAtPath(dict, 1, ""));
    EXPECT_TRUE(setObjectAtPath(dict, 1, "/"));
    EXPECT_EQ(dict.get("/"), Value(1)) << "a path without keys is a plain key";
    EXPECT_TRUE(setObjectAtPath(dict, 2, "t/u/"));
    EXPECT_EQ(objectAtPath(dict, "t/u/"), Value::makeDictionary()) << "nothing at the end";
    EXPECT_TRUE(setObjectAtPath(dict, 3, "k.e.y", Separator("/")));
    EXPECT_EQ(dict.get("k.e.y"), Value(3));
    EXPECT_FALSE(setObjectAtPath(dict, Value(), "absent")) << "nothing is not stored";
    EXPECT_TRUE(dict.get("absent").isAbsent());
    EXPECT_FALSE(setObjectAtPath(dictOf({}), 1, "k")) << "an immutable receiver";
    EXPECT_TRUE(setObjectAtPath(dict, Value::null(), "nil"));
    EXPECT_TRUE(dict.get("nil").isNull());
}

TEST(Append, WritesInPlaceIntoMutableDictionaries) {
    Value dict = Value::makeMutableDictionary();
    auto put = append(dict);
    Value result = put("a/b", 1);
    EXPECT_TRUE(result.sameObject(dict));
    EXPECT_EQ(objectAtPath(dict, "a/b"), Value(1));
    EXPECT_TRUE(put(std::nullopt, 2).sameObject(dict));
    EXPECT_TRUE(put("c", Value()).sameObject(dict));
    EXPECT_TRUE(dict.get("c").isAbsent());
}

TEST(Append, CopiesAnImmutableDictionaryAndLeavesItUntouched) {
    Value fixed = dictOf({{"keep", 1}});
    auto put = append(fixed);
    Value first = put("a.b", 2);
    EXPECT_TRUE(first.isMutable());
    EXPECT_FALSE(first.sameObject(fixed));
    EXPECT_EQ(first, dictOf({{"keep", 1}, {"a", dictOf({{"b", 2}})}}));
    EXPECT_EQ(fixed, dictOf({{"keep", 1}}));
    Value second = put("c", 3);
    EXPECT_TRUE(second.get("a").isAbsent()) << "each call copies the untouched receiver";
    EXPECT_TRUE(put(std::nullopt, 3).sameObject(fixed));
}

TEST(Append, UpperCaseFormAlwaysWritesIntoTheReceiver) {
    Value dict = Value::makeMutableDictionary();
    EXPECT_TRUE(APPEND(dict)("x/y", 1).sameObject(dict));
    EXPECT_EQ(objectAtPath(dict, "x/y"), Value(1));
    Value fixed = dictOf({});
    EXPECT_TRUE(APPEND(fixed)("x", 1).sameObject(fixed));
    EXPECT_TRUE(fixed.get("x").isAbsent());
}

TEST(StringOfAnyRemoveAll, RemovesEveryListedKeyOnlyWhenAsked) {
    Value dict = Value::makeMutableDictionary({{"old", 5}, {"older", "x"}, {"other", 1}});
    EXPECT_EQ(stringOfAnyRemoveAll(dict, {"new", "old", "older"}, false), "5");
    EXPECT_EQ(dict.dictionary().size(), 3u);
    EXPECT_EQ(stringOfAnyRemoveAll(dict, {"new", "older", "old"}, true), "x");
    EXPECT_EQ(dict, Value::makeDictionary({{"other", 1}}));
}

TEST(KeyValues, BuildsFromPairsAndStopsAtTheFirstBadOne) {
    Value built = keyValues({"a/b", 1, "c", "two", "d.e", true});
    EXPECT_TRUE(built.isMutable());
    EXPECT_EQ(built,
              dictOf({{"a", dictOf({{"b", 1}})}, {"c", "two"}, {"d", dictOf({{"e", true}})}}));

    EXPECT_EQ(keyValues({"a", 1, 5, 2, "c", 3}), dictOf({{"a", 1}})) << "a path must be a string";
    EXPECT_EQ(keyValues({"a", 1, "b", Value(), "c", 3}), dictOf({{"a", 1}}));
    EXPECT_EQ(keyValues({"a", 1, Value(), "x", "c", 3}), dictOf({{"a", 1}}));
    EXPECT_EQ(keyValues({"a", 1, "dangling"}), dictOf({{"a", 1}}));
    EXPECT_EQ(keyValues({}), dictOf({}));
}

TEST(NonRetainingDictionary, HoldsValuesAsGiven) {
    Value dict = nonRetainingDictionary();
    Value list = Value::makeMutableArray();
    EXPECT_TRUE(setObjectAtPath(dict, list, "list"));
    EXPECT_TRUE(dict.get("list").sameObject(list));
}
