#include "ui/launcher_bench.h"

#include "engine/launcher.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

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

} // namespace plum
