// Sheets: what grew, how they are written down, and what people read.
#include "sheet/sheet_sentences.h"
#include "sheet/sheets.h"
#include "support/chinese_session.h"
#include "support/dice.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;
using test::inJson;
using test::sheetOf;

TEST(Growth, isWhatIsNewAlone)
{
    const Sheet old = sheetOf({u"file.read \"_pfold_/a.txt\",\"\",\"t\""_s, u"keyboard.key \"a\""_s});
    const Sheet next = sheetOf({u"file.read \"_pfold_/a.txt\",\"\",\"t\""_s, u"keyboard.key \"b\""_s,
        u"file.read \"_pfold_/b.txt\",\"\",\"t\""_s, u"os.lock_screen"_s});
    EXPECT_EQ(inJson(next.growthFrom(old)), R"({"read":["app:b.txt"],"session":["lock"]})");
    EXPECT_TRUE(old.growthFrom(next).isEmpty());
    EXPECT_TRUE(next.growthFrom(Sheet::everything()).isEmpty());
}

TEST(Growth, isWhatIsNamedApartAlsoWhereAnythingWasAllowed)
{
    const Sheet other = sheetOf({u"file.read \"_pfold_/../note/notes.txt\",\"\",\"t\""_s});
    EXPECT_EQ(inJson(other.growthFrom(Sheet::everything())), R"({"read":["apps:note/notes.txt"]})");
}

TEST(SheetJson, givesTheSheetBack)
{
    const QList<Sheet> sheets{{}, Sheet::everything(),
        sheetOf({u"file.open me.drag"_s, u"os.窗口最小化 given"_s, u"keyboard.send me.enter_input"_s,
            u"net.get \"http://a.example/\",\"p\""_s})};
    for (const Sheet &sheet : sheets)
        EXPECT_EQ(sheetFromJson(toJson(sheet)), sheet) << inJson(sheet);
}

TEST(SheetJson, refusesWhatItDoesNotKnow)
{
    const auto isSheet = [](const char *json) { return sheetFromText(json).has_value(); };
    EXPECT_FALSE(isSheet("no sheet"));
    EXPECT_FALSE(isSheet("[]"));
    EXPECT_TRUE(isSheet(R"({"see":["screen"]})"));
    EXPECT_FALSE(isSheet(R"({"see":["thoughts"]})"));
    EXPECT_FALSE(isSheet(R"({"fly":["high"]})"));
    EXPECT_FALSE(isSheet(R"({"see":"screen"})"));
    EXPECT_FALSE(isSheet(R"({"see":[1]})"));
    EXPECT_FALSE(isSheet(R"({"input":["keys:x"]})"));
}

TEST(Sentences, ofAChineseSessionHaveABlankBesideWhatIsNotChinese)
{
    const test::ChineseSession chinese;
    const auto growth = [](const char *json) {
        return sentences(sheetFromText(json).value(), Sentences::Growth).join(u' ');
    };
    EXPECT_EQ(growth(R"({"network":["chess.example"]})"), u"连接 chess.example 以及它转向的地方。"_s);
    EXPECT_EQ(growth(R"({"run":["name:7z"]})"), u"启动或打开 7z。"_s);
    EXPECT_EQ(growth(R"({"run":["name:vim","name:笔记"]})"), u"启动或打开 vim 和笔记。"_s);
    EXPECT_EQ(growth(R"({"run":["name:a中","name:笔记b"]})"), u"启动或打开 a中和笔记b。"_s)
        << "names stay as they are";
}

TEST(Sentences, areWhatAPersonReads)
{
    EXPECT_EQ(sentences(sheetOf({u"file.read \"_pfold_/notes.txt\",\"\",\"t\""_s,
                            u"keyboard.send me.enter_input"_s}))
                  .join(u' '),
        u"Reads notes.txt in its own folder. Types what you type. Keys and clicks go to whatever window is "
        u"in front: "
        u"they are as good as your own hands. Contacts nobody."_s);
    EXPECT_EQ(sentences({}).join(u' '), u"Touches nothing but its own boxes. Contacts nobody."_s);
    EXPECT_EQ(
        sentences(sheetOf({u"file.read \"_pfold_/../note/notes.txt\",\"\",\"t\""_s}), Sentences::Growth),
        QStringList(u"Reads notes.txt in the folder of the app note."_s));
    EXPECT_EQ(sentences(sheetOf({u"net.get \"http://a.example/\",\"p\""_s})),
        QStringList(u"Contacts a.example, and where that leads."_s));
    EXPECT_EQ(sentences(sheetOf({u"file.open me.enter_input"_s})).first(),
        u"Contacts the address that you type."_s);
}

// A script chooses its texts; they are not to look like sentences of ours.
TEST(Sentences, keepTextsOfScriptsApart)
{
    const QString text
        = sentences(sheetOf({u"os.窗口最小化 a\n\nContacts\u202E nobody."_s + QString(500, u'x')}))
              .join(u'|');
    EXPECT_FALSE(text.contains(u'\n'));
    EXPECT_FALSE(text.contains(u'\u202E'));
    EXPECT_LT(text.size(), 250);
}

} // namespace
} // namespace plum
