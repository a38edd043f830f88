#include "ui/frm_set_fixture.h"

#include "engine/launcher.h"
#include "library/fixed_texts.h"
#include "look/theme.h"
#include "support/chinese_session.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using test::ChineseSession;
using FixedTextsTest = FrmSetTest;

} // namespace

TEST(MessageBoxes, haveTheProgramsNameAndLook)
{
    recording::BoxUser user;
    MessageBoxes boxes;
    boxes.showMessage({.text = u"Successfully"_s});
    boxes.showMessage({.text = u"text"_s, .title = u"title"_s});
    boxes.askToDelete(u"确定删除?"_s, u"提示"_s, u"mail"_s);
    EXPECT_EQ(user.titles, QStringList({u"Plum"_s, u"title"_s, u"提示"_s}));
    EXPECT_TRUE(user.allThemed);
}

TEST(MessageBoxes, showPicturesOfTheProgramsOwn)
{
    recording::BoxUser user;
    MessageBoxes boxes;
    boxes.showMessage({.text = u"Successfully"_s});
    boxes.askToDelete(u"确定删除?"_s, u"提示"_s, u"mail"_s);
    boxes.showMessage({.text = u"Error"_s, .icon = MessageIcon::Critical});
    MessageBoxes::askToRun(u"mail"_s, {});
    ASSERT_EQ(user.pictures.size(), 4);
    EXPECT_EQ(user.pictures[1], user.pictures[0]);
    EXPECT_NE(user.pictures[2], user.pictures[0]);
    EXPECT_NE(user.pictures[3], user.pictures[2]);
    const Theme theme = Theme::of(QApplication::palette());
    const auto left = [](const QImage &picture) { return picture.pixelColor(7, picture.height() / 2); };
    EXPECT_EQ(left(user.pictures[2]), theme.error);
    EXPECT_EQ(left(user.pictures[3]), theme.warning);
}

TEST(MessageBoxes, theQuestionBeforeADeletionSaysInOtherWordsWhatGoes)
{
    recording::BoxUser user;
    user.answer = QMessageBox::No;
    MessageBoxes boxes;
    EXPECT_FALSE(boxes.askToDelete(u"确定删除?"_s, u"提示"_s, u"mail"_s));
    EXPECT_EQ(user.seen, QStringList(u"!确定删除?"_s));
    EXPECT_EQ(user.details, QStringList(u"Delete \"mail\"?"_s));
}

TEST_F(FixedTextsTest, standAloneInAnEnglishSession)
{
    start();
    dropPackage(u"calc.wfp"_s);
    EXPECT_EQ(user.seen, QStringList(u"!Successfully"_s));
    EXPECT_EQ(user.details, QStringList(QString()));
    dropPackage(u"calc.wfp"_s);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"calc  already exists"_s);
    EXPECT_FALSE(inBox("meaning")->isVisible());
}

TEST_F(FixedTextsTest, haveTheirMeaningBelowInAChineseSession)
{
    const ChineseSession session;
    start();
    dropPackage(u"calc.wfp"_s);
    rightClick("List", 0);
    listAction("shuoming")->trigger();
    EXPECT_EQ(user.seen, QStringList({u"!Successfully"_s, u"!Guide does not exist"_s}));
    EXPECT_EQ(user.details, QStringList({u"操作成功"_s, u"没有说明"_s}));
}

TEST_F(FixedTextsTest, ofTheNameQuestionHaveItBesideThem)
{
    const ChineseSession session;
    addApps({u"calc"_s});
    start();
    dropPackage(u"calc.wfp"_s);
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"calc  already exists"_s);
    EXPECT_TRUE(inBox("meaning")->isVisible());
    EXPECT_EQ(inBox<QLabel>("meaning")->text(), u"已存在"_s);
    inBox<QLineEdit>("Text4")->setText(u"a:b"_s);
    EXPECT_FALSE(inBox("meaning")->isVisible());
    click(inBox("Image2"));
    EXPECT_EQ(inBox<QLabel>("Label6")->text(), u"Can not exist *[\\/:*?\"<|>]*"_s);
    EXPECT_EQ(inBox<QLabel>("meaning")->text(), u"不能含有 \\ / : * ? \" < | > 这些字符"_s);
}

TEST_F(FixedTextsTest, aboveAReasonHaveTheirMeaningToo)
{
    const ChineseSession session;
    start();
    drop(viewport("List"), {QUrl::fromLocalFile(folder.addPackage(u"bad.wfp"_s, "no archive"))});
    ASSERT_EQ(user.seen.size(), 1);
    EXPECT_TRUE(user.seen.front().startsWith(u"!Error\n\n"_s)) << user.seen.front().toStdString();
    EXPECT_EQ(user.details, QStringList(u"出错了"_s));
}

TEST_F(FixedTextsTest, ofTheSecondScriptHaveTheirMeaningBesideThem)
{
    const ChineseSession session;
    addApps({u"note"_s});
    start();
    type(text8(), u"n"_s);
    mouse(viewport("List2"), QEvent::MouseButtonDblClick, rowCentre("List2", 0), Qt::LeftButton,
        Qt::LeftButton);
    ASSERT_TRUE(find("addeditbox")->isVisible());
    EXPECT_EQ(find<QLabel>("Label5")->text(), u"\"note\"  is editting"_s);
    EXPECT_TRUE(find<QLabel>("file")->text().startsWith(u"正在编辑 · .main.wf"_s))
        << find<QLabel>("file")->text().toStdString();
    EXPECT_EQ(find("Image9")->toolTip(), u"Hide (隐藏)"_s);
}

TEST_F(FixedTextsTest, areAllTranslated)
{
    const ChineseSession session;
    for (const QString &text : {u"Successfully"_s, u"Error"_s, u"Keyword is required"_s,
             u"Keyword already exists"_s, u"The Keyword already exists, whether it is renamed ?"_s,
             u"installed successfully"_s, u"Guide does not exist"_s, u"Error\n\nwhy"_s, u"Hide"_s})
        EXPECT_FALSE(meaningOfFixed(text).isEmpty()) << text.toStdString();
    EXPECT_EQ(meaningOfFixed(u"another text"), QString());
}

} // namespace plum
