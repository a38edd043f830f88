#include "ui/launcher_bench.h"

#include "ui/editing/edit_panel.h"
#include "ui/editing/script_editor.h"
#include "ui/lists/keyword_list.h"

#include <QLineEdit>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

// The launcher with more, longer and stranger things than a user brings by hand.
class OddInputTest : public testing::Test, protected recording::LauncherBench
{
protected:
    KeywordList *list() { return find<KeywordList>("List"); }
    QWidget *listViewport() { return list()->viewport(); }

    static QList<QUrl> manyFiles(const QString &ending)
    {
        QList<QUrl> urls;
        for (int i = 0; i < 1000; ++i)
            urls += QUrl::fromLocalFile(u"/tmp/%1%2"_s.arg(i).arg(ending));
        return urls;
    }

    // Paints the window as it would be painted for the user.
    void paint() { EXPECT_FALSE(ui.window()->grab().isNull()); }
};

} // namespace

TEST_F(OddInputTest, aScriptOfTwoHundredTipsShowsOneAfterTheOther)
{
    QByteArray script;
    for (int i = 0; i < 200; ++i)
        script += "os.tips \"" + QByteArray::number(i) + "\"\r\n";
    folder.addApp(u"flood"_s, script + "note.down \"over\"\r\n");
    start();
    type(find("Text8"), u"flood"_s);
    key(find("Text8"), Qt::Key_Return);
    int shown = 0;
    for (; topLevel("shurubox"); ++shown)
        click(inBox("Image1"));
    EXPECT_EQ(shown, 200);
    EXPECT_EQ(said(), QStringList(u"note over"_s));
}

TEST_F(OddInputTest, anAppStartedAgainAndAgainWhileItAsksLeavesOneBox)
{
    folder.addApp(u"ask"_s, "input.text \"who\",\"?\"\r\nnote.down \"over\"\r\n");
    start();
    type(find("Text8"), u"ask"_s);
    for (int i = 0; i < 200; ++i)
        key(find("Text8"), Qt::Key_Return);
    click(inBox("Label1"));
    EXPECT_FALSE(topLevel("shurubox"));
    EXPECT_EQ(said(), QStringList(u"note over"_s));
}

TEST_F(OddInputTest, ofAThousandPackagesDroppedOnAListTheFirstIsInstalled)
{
    start();
    QList<QUrl> packages;
    for (int i = 0; i < 1000; ++i)
        packages += QUrl::fromLocalFile(
            folder.addPackage(u"%1.wfp"_s.arg(i), recording::packageOf({{u"main.wf"_s, "x"}})));
    drop(listViewport(), packages);
    EXPECT_EQ(folder.inApps(), QStringList(u"0"_s));
    EXPECT_EQ(recording::bytesOf(folder.configTxt()), "0\r\n");
}

TEST_F(OddInputTest, ofAThousandFilesDroppedOnTheKeywordBoxTheFirstCounts)
{
    start();
    drop(find("Text8"), manyFiles(u".txt"_s));
    EXPECT_EQ(state.droppedPath, QDir::toNativeSeparators(u"/tmp/0.txt"_s));
}

TEST_F(OddInputTest, aFolderNamedLikeAPackageIsAnErrorAndListsNothing)
{
    ASSERT_TRUE(QDir().mkpath(folder.path() + u"/folder.wfp"_s));
    start();
    drop(listViewport(), {QUrl::fromLocalFile(folder.path() + u"/folder.wfp"_s)});
    EXPECT_EQ(user.seen, QStringList(u"!Error\n\nThe package is not there."_s));
    EXPECT_EQ(list()->model()->rowCount(), 0);
}

TEST_F(OddInputTest, foldersAndBrokenShortcutsDroppedOnTheEditorAreTheirPaths)
{
    start();
    ui.window()->showEditPanel();
    drop(find<QAbstractScrollArea>("Text4")->viewport(),
        {QUrl::fromLocalFile(u"/tmp"_s), QUrl::fromLocalFile(u"/tmp/broken.lnk"_s),
            QUrl(u"https://example.org/"_s)});
    EXPECT_EQ(
        find<ScriptEditor>("Text4")->script(), QDir::toNativeSeparators(u"/tmp\r\n/tmp/broken.lnk\r\n"_s));
}

TEST_F(OddInputTest, anAddressDroppedOnTheKeywordBoxIsNoFile)
{
    start();
    drop(find("Text8"), {QUrl(u"https://example.org/"_s)});
    EXPECT_EQ(state.droppedPath, QString());
}

TEST_F(OddInputTest, appsWithStrangeNamesAreListedPaintedAndRun)
{
    QStringList names{u"\"quoted\""_s, u"it's"_s, u"\U0001F680\U0001F468\u200D\U0001F469\u200D\U0001F467"_s,
        u"blank "_s, u" before"_s, u"%1 %2"_s, u"<b>bold"_s, u"\u202Egnp.exe"_s, u"-rf"_s, u"~"_s,
        QString(255, u'n'), QString(85, u'\u4f60')};
    for (const QString &name : names) {
        if (!QDir().mkpath(folder.apps(name)))
            GTEST_SKIP() << "This file system does not take such names.";
        folder.addApp(name, "note.down \"ran\"\r\n");
    }
    start();
    paint();
    ASSERT_EQ(list()->model()->rowCount(), names.size());
    QStringList listed;
    for (int row = 0; row < names.size(); ++row) {
        listed += list()->model()->index(row, 0).data().toString();
        list()->setCurrentIndex(list()->model()->index(row, 0));
        key(list(), Qt::Key_Return);
        EXPECT_EQ(said().size(), row + 1) << listed.back().toStdString();
    }
    listed.sort();
    names.sort();
    EXPECT_EQ(listed, names);
}

TEST_F(OddInputTest, tenThousandNamesWithoutFoldersFilterAndPaint)
{
    QStringList keywords;
    for (int i = 0; i < 10000; ++i)
        keywords += u"gone%1"_s.arg(i);
    writeBytes(folder.configTxt(), configText(keywords).toUtf8());
    ASSERT_TRUE(QDir().mkpath(folder.apps()));
    start();
    for (const QChar digit : u"9999"_s) {
        type(find("Text8"), digit);
        paint();
    }
    EXPECT_EQ(find<KeywordList>("List2")->model()->rowCount(), 1);
    key(find("Text8"), Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(OddInputTest, aKeywordBoxWithAVeryLongTextFindsNothingAndStaysUsable)
{
    addApps({u"note"_s});
    start();
    find<QLineEdit>("Text8")->setText(QString(100000, u'x'));
    paint();
    EXPECT_EQ(find<KeywordList>("List2")->model()->rowCount(), 0);
    find<QLineEdit>("Text8")->clear();
    type(find("Text8"), u"note"_s);
    key(find("Text8"), Qt::Key_Return);
    EXPECT_EQ(said(), QStringList(u"note note"_s));
}

} // namespace plum
