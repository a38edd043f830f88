#include "ui/frm_set_fixture.h"

#include "engine/launcher.h"
#include "library/fixed_texts.h"
#include "look/translations.h"

#include <QLabel>
#include <QTranslator>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A Chinese session, for as long as it lives.
class ChineseSession
{
public:
    ChineseSession() { installTranslation(*qApp, QLocale(QLocale::Chinese, QLocale::China)); }
    ~ChineseSession()
    {
        for (QTranslator *each : qApp->findChildren<QTranslator *>()) {
            if (!m_before.contains(each))
                delete each;
        }
    }
    Q_DISABLE_COPY_MOVE(ChineseSession)

private:
    QList<QTranslator *> m_before = qApp->findChildren<QTranslator *>();
};

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

TEST_F(FixedTextsTest, areAllTranslated)
{
    const ChineseSession session;
    for (const QString &text : {u"Successfully"_s, u"Error"_s, u"Keyword is required"_s,
             u"Keyword already exists"_s, u"The Keyword already exists, whether it is renamed ?"_s,
             u"installed successfully"_s, u"Guide does not exist"_s})
        EXPECT_FALSE(meaningOfFixed(text).isEmpty()) << text.toStdString();
    EXPECT_EQ(meaningOfFixed(u"another text"), QString());
}

} // namespace plum
