#include "platform/wayland/sway/sway_tree.h"

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

TEST(PutAwayMark, saysWhatItWasMadeOf)
{
    for (const auto manner : {PutAway::Manner::Hidden, PutAway::Manner::Minimised}) {
        for (const auto before :
            {PutAway::Before::Floating, PutAway::Before::Tiled, PutAway::Before::Fullscreen}) {
            const QRect rectangle(-50, 1200, 640, 480);
            const auto read = PutAway::fromMark(
                PutAway{.manner = manner, .before = before, .rectangle = rectangle}.mark(7));
            ASSERT_TRUE(read);
            EXPECT_EQ(read->manner, manner);
            EXPECT_EQ(read->before, before);
            EXPECT_EQ(read->rectangle, rectangle);
        }
    }
}

TEST(PutAwayMark, isAnotherOneForEachWindow)
{
    const PutAway same{.rectangle = {1, 2, 3, 4}};
    EXPECT_NE(same.mark(7), same.mark(8));
}

TEST(PutAwayMark, isNoMarkOfTheUser)
{
    for (const QString &mark : {u"editor"_s, QString(), u"_plum"_s, u"_plum.hidden"_s, u"a.b.c.d.e.f.g.h"_s})
        EXPECT_FALSE(PutAway::fromMark(mark)) << mark.toStdString();
}

} // namespace plum
