#include "ui/frm_set_fixture.h"

#include "look/theme.h"
#include "ui/editing/edit_panel.h"

#include <QImage>
#include <QPushButton>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr double forText = 4.5; // WCAG 2.1, 1.4.3
constexpr double forControls = 3; // 1.4.11

double luminance(const QColor &colour)
{
    const auto linear
        = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

Theme useTheme(bool isDark)
{
    QPalette palette;
    palette.setColor(QPalette::Window, isDark ? Qt::black : Qt::white);
    palette.setColor(QPalette::WindowText, isDark ? Qt::white : Qt::black);
    QApplication::setPalette(palette);
    return Theme::of(palette);
}

// In the light and in the dark theme.
class ContrastTest : public FrmSetTest, public testing::WithParamInterface<bool>
{
protected:
    ~ContrastTest() override { QApplication::setPalette(QPalette()); }

    const Theme theme = useTheme(GetParam());

    static QImage pictureOf(QWidget &widget)
    {
        QApplication::processEvents();
        return widget.grab().toImage();
    }

    // Of the pixel that differs most from `ground`: thin strokes are paler at their edges.
    static double strongest(const QImage &picture, const QRect &where, const QColor &ground)
    {
        double most = 1;
        for (int y = where.top(); y <= where.bottom(); ++y) {
            for (int x = where.left(); x <= where.right(); ++x)
                most = std::max(most, contrast(picture.pixelColor(x, y), ground));
        }
        return most;
    }
};

INSTANTIATE_TEST_SUITE_P(
    Themes, ContrastTest, testing::Bool(), [](const auto &each) { return each.param ? "dark" : "light"; });

} // namespace

TEST_P(ContrastTest, textsCanBeReadOnEveryGround)
{
    for (const QColor &ground : {theme.window, theme.field, theme.hover, theme.held}) {
        for (const QColor &ink :
            {theme.text, theme.quiet, theme.accent, theme.comment, theme.string, theme.variable})
            EXPECT_GE(contrast(ink, ground), forText)
                << qPrintable(ink.name()) << " on " << qPrintable(ground.name());
    }
    EXPECT_GE(contrast(theme.onAccent, theme.accent), forText);
}

TEST_P(ContrastTest, controlsStandOutFromEveryGround)
{
    for (const QColor &ground : {theme.window, theme.field, theme.hover})
        EXPECT_GE(contrast(theme.border, ground), forControls) << qPrintable(ground.name());
    for (const QColor &mark : {theme.error, theme.warning, theme.quiet}) {
        EXPECT_GE(contrast(mark, theme.field), forControls) << qPrintable(mark.name());
        EXPECT_GE(contrast(mark, theme.window), forControls) << qPrintable(mark.name());
    }
}

TEST_P(ContrastTest, thePlaceholderOnTheScreenCanBeRead)
{
    start();
    const QImage picture = pictureOf(*text8());
    EXPECT_GE(strongest(picture, text8()->rect().adjusted(6, 6, -6, -6), theme.field), forText);
    find("okbox")->setFocus();
    ui.window()->editPanel().openForAdding({});
    ui.window()->showEditPanel();
    for (const char *name : {"Text7", "Text4"}) {
        QWidget *entry = find(name);
        EXPECT_GE(strongest(pictureOf(*entry), entry->rect().adjusted(6, 6, -6, -6), theme.field), forText)
            << name;
    }
}

TEST_P(ContrastTest, bordersAndTheScrollBarOnTheScreenCanBeSeen)
{
    QStringList keywords;
    for (int i = 0; i < 30; ++i)
        keywords += QString::number(i);
    addApps(keywords);
    start();
    ui.window()->setFocus();
    const QImage picture = pictureOf(*ui.window());
    const auto placed
        = [&](QWidget *widget) { return QRect(widget->mapTo(ui.window(), QPoint()), widget->size()); };
    const QRect entry = placed(text8());
    EXPECT_GE(strongest(picture, QRect(entry.left(), entry.center().y(), 2, 1), theme.window), forControls);
    QScrollBar *bar = find<KeywordList>("List")->verticalScrollBar();
    ASSERT_TRUE(bar->isVisible());
    const QRect handle(placed(bar).topLeft() + QPoint(bar->width() / 2, 10), QSize(1, 1));
    EXPECT_GE(strongest(picture, handle, theme.window), forControls);

    ui.askPackageName(u"x"_s);
    auto *button = inBox<QPushButton>("Label4");
    const QImage box = pictureOf(*topLevel("shurubox"));
    const QRect edge(button->mapTo(topLevel("shurubox"), QPoint(0, button->height() / 2)), QSize(2, 1));
    EXPECT_GE(strongest(box, edge, theme.window), forControls);
}

} // namespace plum
