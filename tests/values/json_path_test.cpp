#include "values/json_path.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

const QString json
    = uR"( {"a": {"b": [10, "zwei", {"c.d": true}]}, "n": null, "x": 0.1, "big": 9007199254740993,
    "length": 3, "": "nameless"} )"_s;

QString at(const QString &path, const QString &text = json)
{
    const JsonFinding found = followJsonPath(text, path);
    return found.value ? *found.value : u"! "_s + found.problem;
}

} // namespace

TEST(JsonPath, LeadsThroughObjectsAndArrays)
{
    EXPECT_EQ(at(u"a.b[0]"_s), u"10");
    EXPECT_EQ(at(u"a.b[1]"_s), u"zwei");
    EXPECT_EQ(at(u"a.b[-1]"_s), u"{\"c.d\":true}");
    EXPECT_EQ(at(u"a.b[2]['c.d']"_s), u"true");
    EXPECT_EQ(at(u"a['b'][0]"_s), u"10");
    EXPECT_EQ(at(u"a.b.length"_s), u"3");
    EXPECT_EQ(at(u"length"_s), u"3");
    EXPECT_EQ(at(u"['']"_s), u"nameless");
}

TEST(JsonPath, GivesValuesAsTexts)
{
    EXPECT_EQ(at(u"n"_s), u"");
    EXPECT_EQ(at(u"x"_s), u"0.1");
    EXPECT_EQ(at(u"big"_s), u"9007199254740993");
    EXPECT_EQ(at(u"a.b"_s), u"[10,\"zwei\",{\"c.d\":true}]");
    EXPECT_EQ(at({}, u"\"text\""_s), u"text");
    EXPECT_EQ(at({}, u" 12 "_s), u"12");
    EXPECT_EQ(at(u"[1]"_s, u"[1,2]"_s), u"2");
}

TEST(JsonPath, SaysWhatIsMissing)
{
    EXPECT_EQ(at(u"a.c"_s), u"! there is no \"c\" (path a.c)");
    EXPECT_EQ(at(u"a.b[3]"_s), u"! there is no element 3 (path a.b[3])");
    EXPECT_EQ(at(u"a.b[-4]"_s), u"! there is no element -4 (path a.b[-4])");
    EXPECT_EQ(at(u"a[0]"_s), u"! there is no element 0 (path a[0])");
    EXPECT_EQ(at(u"x.y"_s), u"! there is no \"y\" (path x.y)");
}

TEST(JsonPath, RefusesWhatMakesNoSense)
{
    for (const QString &path :
        {u"a..b"_s, u"."_s, u"a["_s, u"a[]"_s, u"a[x]"_s, u"a['b"_s, u"a['b'"_s, u"a."_s})
        EXPECT_TRUE(at(path).startsWith("! the path makes no sense"_L1)) << qPrintable(path);
    for (const QString &text : {u""_s, u"{"_s, u"1,2"_s, u"plum"_s, u"{} {}"_s, u"1],[2"_s})
        EXPECT_EQ(at({}, text), u"! the text is not JSON") << qPrintable(text);
    EXPECT_EQ(at({}, u"["_s.repeated(100000)), u"! the text is not JSON");
}
