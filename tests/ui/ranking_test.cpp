#include "ui/frm_set_fixture.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

// The order of what is found, as it is saved and as a setting has it.
class RankingTest : public FrmSetTest
{
protected:
    void setOptions(const QByteArray &content)
    {
        writeBytes(folder.path() + u"/config/load/options.ini"_s, content);
    }

    void runTyped(const QString &keyword)
    {
        find<QLineEdit>("Text8")->setText(keyword);
        key(text8(), Qt::Key_Return);
    }

    QStringList found(const QString &typed)
    {
        find<QLineEdit>("Text8")->setText(typed);
        return listed("List2");
    }
};

} // namespace

TEST_F(RankingTest, withoutTheSettingTheSavedOrderStaysAndMatchesAreExact)
{
    addApps({u"mail"_s, u"Main"_s, u"git-pull"_s});
    start();
    runTyped(u"git-pull"_s);
    EXPECT_EQ(listed("List"), QStringList({u"mail"_s, u"Main"_s, u"git-pull"_s}));
    EXPECT_EQ(found(u"ma"_s), QStringList(u"mail"_s));
    EXPECT_EQ(found(u"gp"_s), QStringList());
}

TEST_F(RankingTest, whatWasRunLastComesFirstAndStaysThereForTheNextStart)
{
    setOptions("[list]\r\norder=recent\r\n");
    addApps({u"mail"_s, u"main"_s, u"made"_s});
    start();
    EXPECT_EQ(found(u"ma"_s), QStringList({u"mail"_s, u"main"_s, u"made"_s}));
    runTyped(u"made"_s);
    runTyped(u"main"_s);
    EXPECT_EQ(said(), QStringList({u"note made"_s, u"note main"_s}));
    EXPECT_EQ(found(u"ma"_s), QStringList({u"main"_s, u"made"_s, u"mail"_s}));
    EXPECT_EQ(bytesOf(folder.configTxt()), "main\r\nmade\r\nmail\r\n");
}

TEST_F(RankingTest, otherLetterCaseAndInitialsStandBehindTheExactMatches)
{
    setOptions("[list]\norder = Recent\n");
    addApps({u"GP"_s, u"git-pull"_s, u"GitPush"_s, u"bagpipe"_s, u"go"_s});
    start();
    EXPECT_EQ(found(u"gp"_s), QStringList({u"bagpipe"_s, u"GP"_s, u"git-pull"_s, u"GitPush"_s}));
    EXPECT_EQ(found(u"zz"_s), QStringList());
}

TEST_F(RankingTest, aRowThatIsRunFromTheListStaysSelected)
{
    setOptions("[list]\r\norder=recent\r\n");
    addApps({u"one"_s, u"two"_s});
    start();
    key(text8(), Qt::Key_Down);
    key(find("List"), Qt::Key_Down);
    key(find("List"), Qt::Key_Return);
    EXPECT_EQ(listed("List"), QStringList({u"two"_s, u"one"_s}));
    EXPECT_EQ(find<KeywordList>("List")->text(), u"two"_s);
}

TEST_F(RankingTest, aWordThatMeansNothingChangesNothing)
{
    setOptions("[list]\r\norder=backwards\r\n");
    addApps({u"one"_s, u"two"_s});
    start();
    runTyped(u"two"_s);
    EXPECT_EQ(listed("List"), QStringList({u"one"_s, u"two"_s}));
}

} // namespace plum
