// What the page of a run says of a picture that is nearly on the screen.

#include "desktop/support/search_test.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class NearMiss : public SearchTest
{
protected:
    void SetUp() override
    {
        startDesktop(u"openbox"_s);
        showPicture({100, 60, 320, 252});
    }
};

} // namespace

TEST_F(NearMiss, isNamedWithItsPlaceAndItsPixelsWhereAButtonHasChanged)
{
    // The script's picture of the button is older than the button: three pixels were not red, or were.
    constexpr std::array changed{QPoint(5, 3), QPoint(6, 3), QPoint(5, 4)};
    QImage button(partPath());
    for (const QPoint pixel : changed)
        button.setPixel(pixel, button.pixel(pixel) ^ 0xff0000);
    ASSERT_TRUE(button.save(partPath()));

    const QString script = folder() + u"/find.wf"_s;
    const QString page = folder() + u"/page.html"_s;
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("//edition:2\n" + findPart({}, {}, u"spot"_s).toUtf8() + '\n');
    file.close();
    server().start(program(), QFileInfo(QStringLiteral(PLUM_PROGRAM)).path() + u"/plumkit"_s,
        {u"run"_s, u"--trace"_s, page, script});
    ASSERT_TRUE(program().waitForFinished(test::patience));
    EXPECT_EQ(program().exitCode(), 1);

    QFile written(page);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly)) << program().readAllStandardError().toStdString();
    const QString shown = QString::fromUtf8(written.readAll());
    const QString miss
        = u"nearest miss at %1: 3 of %2 pixels differ (red 3, green 0, blue 0), in the picture at 5:3, 6:3, 5:4"_s
              .arg(asText(onScreen(part.topLeft())))
              .arg((part.width() - 1) * (part.height() - 1)); // searches leave the last row and column out
    EXPECT_TRUE(shown.contains(miss))
        << shown.mid(std::max<qsizetype>(shown.indexOf("nearest miss"_L1), 0), 200).toStdString();
}

} // namespace plum
