#include "support/wait_until.h"
#include "ui/controls/caret_rest.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace plum {

using namespace std::chrono_literals;
using test::waitUntil;

namespace {

bool isResting()
{
    return QApplication::cursorFlashTime() == 0;
}

} // namespace

TEST(CaretRest, theCaretStandsStillUntilTheNextKey)
{
    const int usual = QApplication::cursorFlashTime();
    ASSERT_GT(usual, 0);
    {
        CaretRest rest(20ms);
        EXPECT_EQ(QApplication::cursorFlashTime(), usual);
        ASSERT_TRUE(waitUntil(isResting));

        QLineEdit entry;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, {}, QStringLiteral("a"));
        QApplication::sendEvent(&entry, &press);
        EXPECT_EQ(QApplication::cursorFlashTime(), usual);
        ASSERT_TRUE(waitUntil(isResting));
    }
    EXPECT_EQ(QApplication::cursorFlashTime(), usual);
}

} // namespace plum
