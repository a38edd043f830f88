#include "engine/variable_store.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::VariableStore;

TEST(VariableStore, SetVarAddsOrReplaces)
{
    VariableStore store;
    store.SetVar(u"a"_s, u"1"_s);
    store.SetVar(u"b"_s, u"2"_s);
    store.SetVar(u"a"_s, u"3"_s);
    EXPECT_EQ(store.size(), 2);
    EXPECT_EQ(store.GetVar(u"a"_s), u"3"_s);
    EXPECT_EQ(store.GetVar(u"b"_s), u"2"_s);
}

TEST(VariableStore, NamesTellLetterCaseApart)
{
    VariableStore store;
    store.SetVar(u"name"_s, u"1"_s);
    EXPECT_FALSE(store.contains(u"Name"_s));
    EXPECT_EQ(store.GetVar(u"Name"_s), QString());
}

TEST(VariableStore, AnEmptyValueAndAnEmptyNameAreKept)
{
    VariableStore store;
    store.SetVar(u"a"_s, QString());
    store.SetVar(QString(), u"nameless"_s);
    EXPECT_TRUE(store.contains(u"a"_s));
    EXPECT_EQ(store.GetVar(QString()), u"nameless"_s);
}

TEST(VariableStore, RemoveAllForgetsEverything)
{
    VariableStore store;
    store.SetVar(u"a"_s, u"1"_s);
    store.removeAll();
    EXPECT_EQ(store.size(), 0);
    EXPECT_FALSE(store.contains(u"a"_s));
}

TEST(VariableStore, FindsWhatIsThere)
{
    VariableStore store;
    EXPECT_EQ(store.find(u"a"_s), nullptr);
    store.SetVar(u"a"_s, {});
    ASSERT_NE(store.find(u"a"_s), nullptr);
    EXPECT_EQ(*store.find(u"a"_s), QString());
}

TEST(VariableStore, KeepsManyNamesApart)
{
    VariableStore store;
    for (int number = 0; number < 10'000; ++number)
        store.SetVar(u"name"_s + QString::number(number), QString::number(number));
    EXPECT_EQ(store.size(), 10'000);
    for (int number = 0; number < 10'000; ++number)
        EXPECT_EQ(store.GetVar(u"name"_s + QString::number(number)), QString::number(number));
}
