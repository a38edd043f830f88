#include "desktop/support/script_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class MouseScripts : public ScriptTest<EveryManagerTest>
{
protected:
    // What the probe has seen of the pointer, up to `last`.
    QStringList mouseEventsUpTo(const QString &last)
    {
        EXPECT_TRUE(probe->sees(last)) << last.toStdString();
        return probe->seen({u"button"_s, u"double"_s});
    }

    static QString event(const QString &what, QPoint at)
    {
        return u"%1 %2 %3"_s.arg(what).arg(at.x()).arg(at.y());
    }
};

INSTANTIATE_TEST_SUITE_P(Under, MouseScripts, everyManager, managerName);

} // namespace

TEST_P(MouseScripts, moveThePointerToThePixel)
{
    const QPoint point = inClient(321, 123);
    run({u"mouse.move \"%1\""_s.arg(asText(point))});
    EXPECT_EQ(view->pointer(), point);
    EXPECT_TRUE(probe->sees(event(u"motion"_s, point)));
}

TEST_P(MouseScripts, moveToTheSameNumberTwiceWithoutAColon)
{
    run({u"mouse.move \"333\""_s});
    EXPECT_EQ(view->pointer(), QPoint(333, 333));
}

TEST_P(MouseScripts, moveOffTheDesktopStopsAtItsEdge)
{
    run({u"mouse.move \"5000:-20\""_s});
    EXPECT_EQ(view->pointer(), QPoint(1279, 0));
}

TEST_P(MouseScripts, offsetThePointer)
{
    const QPoint point = inClient(50, 100);
    run({u"mouse.move \"%1\""_s.arg(asText(point)), u"mouse.offset \"7:-9\""_s});
    EXPECT_EQ(view->pointer(), point + QPoint(7, -9));
}

TEST_P(MouseScripts, readThePosition)
{
    const QPoint point = inClient(77, 99);
    run({u"mouse.move \"%1\""_s.arg(asText(point)), u"mouse.get_xy \"was\""_s, u"mouse.get_y \"y\""_s,
        u"mouse.move \"5:5\""_s, u"mouse.move set.was"_s});
    EXPECT_EQ(view->pointer(), point);
}

TEST_P(MouseScripts, click)
{
    const QPoint point = inClient(100, 200);
    run({u"mouse.move \"%1\""_s.arg(asText(point)), u"mouse.click"_s});
    EXPECT_EQ(mouseEventsUpTo(event(u"button up 1"_s, point)),
        (QStringList{event(u"button down 1"_s, point), event(u"button up 1"_s, point)}));
}

TEST_P(MouseScripts, doubleClickAsProgramsUnderstandIt)
{
    const QPoint point = inClient(100, 200);
    run({u"mouse.move \"%1\""_s.arg(asText(point)), u"mouse.d_click"_s});
    ASSERT_TRUE(probe->sees(event(u"double click 1"_s, point)));
    ASSERT_TRUE(eventually([&] { return probe->seen({u"button up"_s}).size() == 2; }));
    EXPECT_EQ(probe->seen({u"button"_s, u"double"_s}),
        (QStringList{event(u"button down 1"_s, point), event(u"button up 1"_s, point),
            event(u"button down 1"_s, point), event(u"double click 1"_s, point),
            event(u"button up 1"_s, point)}));
}

TEST_P(MouseScripts, rightClick)
{
    const QPoint point = inClient(100, 200);
    run({u"mouse.move \"%1\""_s.arg(asText(point)), u"mouse.r_click"_s});
    EXPECT_EQ(mouseEventsUpTo(event(u"button up 3"_s, point)),
        (QStringList{event(u"button down 3"_s, point), event(u"button up 3"_s, point)}));
}

TEST_P(MouseScripts, dragBetweenTwoPoints)
{
    const QPoint from = inClient(100, 100);
    const QPoint to = inClient(260, 217);
    run({u"mouse.drag \"%1\",\"%2\""_s.arg(asText(from), asText(to))});
    ASSERT_TRUE(probe->sees(event(u"button up 1"_s, to)));
    const QStringList seen = probe->seen({u"button"_s, u"motion"_s});
    const QStringList drag = seen.mid(seen.indexOf(event(u"button down 1"_s, from)));
    EXPECT_EQ(drag.mid(drag.size() - 2), (QStringList{event(u"motion"_s, to), event(u"button up 1"_s, to)}));
    EXPECT_EQ(drag.filter(u"button"_s).size(), 2);
}

TEST_P(MouseScripts, dragByADistance)
{
    const QPoint from = inClient(100, 100);
    run({u"mouse.drag_to \"%1\",\"90:-10\""_s.arg(asText(from))});
    EXPECT_EQ(mouseEventsUpTo(event(u"button up 1"_s, from + QPoint(90, -10))).front(),
        event(u"button down 1"_s, from));
}

TEST_P(MouseScripts, pressMoveAndReleaseOneByOne)
{
    const QPoint from = inClient(100, 100);
    const QPoint to = inClient(140, 160);
    run({u"mouse.move \"%1\""_s.arg(asText(from)), u"mouse.l_down"_s, u"mouse.move \"%1\""_s.arg(asText(to)),
        u"mouse.l_up"_s, u"mouse.r_down"_s, u"mouse.r_up"_s});
    EXPECT_EQ(mouseEventsUpTo(event(u"button up 3"_s, to)),
        (QStringList{event(u"button down 1"_s, from), event(u"button up 1"_s, to),
            event(u"button down 3"_s, to), event(u"button up 3"_s, to)}));
}

TEST_P(MouseScripts, dragAWindowByItsTitleBar)
{
    const QRect before = view->frameRectangle(probe->window());
    const QPoint grip = before.topLeft() + QPoint(before.width() / 2, 10);
    run({u"mouse.drag_to \"%1\",\"120:80\""_s.arg(asText(grip))});
    EXPECT_TRUE(
        eventually([&] { return view->frameRectangle(probe->window()) == before.translated(120, 80); }));
    EXPECT_EQ(view->frameRectangle(probe->window()), before.translated(120, 80));
}

} // namespace plum
