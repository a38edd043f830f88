#include "stopping/stop_hotkey.h"

#include "platform/global_hotkey.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(StopHotkey, IsReadFromItsText)
{
    EXPECT_EQ(
        stopHotkeyFromText(u"Ctrl+Alt+S"_s), (StopHotkey{GlobalHotkey::Control | GlobalHotkey::Alt, 'S'}));
    EXPECT_EQ(stopHotkeyFromText(u" shift + q "_s), (StopHotkey{GlobalHotkey::Shift, 'Q'}));
    EXPECT_EQ(stopHotkeyFromText(u"x+ALT"_s), (StopHotkey{GlobalHotkey::Alt, 'X'}));
}

TEST(StopHotkey, IsNoneWithoutAModifierOrALetterOrInOtherWords)
{
    for (const QString &text : {u""_s, u"S"_s, u"Ctrl"_s, u"Ctrl+Alt"_s, u"Ctrl+S+D"_s, u"Ctrl+F1"_s,
             u"Super+S"_s, u"Ctrl+1"_s, u"+"_s})
        EXPECT_EQ(stopHotkeyFromText(text), StopHotkey()) << text.toStdString();
}
