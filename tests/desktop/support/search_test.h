#pragma once

#include "desktop/support/script_test.h"

#include <QImage>

#include <random>

namespace plum {

// A desktop with a window that shows a picture of which every pixel is known, and scripts that search for a
// part of it and for a colour in it.
class SearchTest : public ScriptTest<DesktopTest>
{
protected:
    // Where the part lies in the picture, and the two pixels of the colour: the first one in reading order is
    // not the leftmost.
    static constexpr QRect part{20, 10, 24, 16};
    static constexpr QPoint firstMark{17, 11};
    static constexpr QPoint secondMark{5, 20};
    static constexpr QRgb markColour = 0xff12ab34;

    // Shows the picture in a window of that area and waits until it is on the screen.
    void showPicture(const QRect &area, const QString &title = QStringLiteral("Picture"))
    {
        const QImage picture = knownPicture();
        ASSERT_TRUE(picture.save(folder() + QStringLiteral("/picture.png")));
        ASSERT_TRUE(picture.copy(part).save(partPath()));
        painter = startProbe(title, area, folder() + QStringLiteral("/picture.png"));
        ASSERT_TRUE(isReadyForUse(*painter));
        ASSERT_TRUE(eventually([&] { return shows(picture); }));
        painter->forget();
    }

    // A point of the picture on the screen.
    QPoint onScreen(QPoint inPicture)
    {
        return view->clientRectangle(painter->window()).topLeft() + Probe::picturePlace + inPicture;
    }

    QString partPath() const { return folder() + QStringLiteral("/part.png"); }
    QString logPath() const { return folder() + QStringLiteral("/log.txt"); }

    QString findPart(const QString &region, const QString &offset, const QString &action) const
    {
        return QStringLiteral("os.find_pic \"%1\",\"%2\",\"%3\",\"%4\"")
            .arg(partPath(), region, offset, action);
    }

    static QString findMark(const QString &region, const QString &offset, const QString &action)
    {
        return QStringLiteral("os.find_color \"12AB34\",\"%1\",\"%2\",\"%3\"").arg(region, offset, action);
    }

    // The line that writes a variable to the log, and what has been written so.
    QString logLine(const QString &variable) const
    {
        return QStringLiteral("file.save \"%1\",\"%2\",\"append\"").arg(logPath(), variable);
    }

    QStringList logged() const
    {
        QFile file(logPath());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
        lines.removeLast();
        return lines;
    }

    static QString asRegion(const QRect &region)
    {
        return QStringLiteral("%1:%2:%3:%4")
            .arg(region.x())
            .arg(region.y())
            .arg(region.width())
            .arg(region.height());
    }

    std::unique_ptr<Probe> painter;

    void TearDown() override
    {
        painter.reset();
        ScriptTest::TearDown();
    }

private:
    // Red is all or nothing at random, as the search tells little but reds apart.
    static QImage knownPicture()
    {
        QImage picture(60, 40, QImage::Format_RGB32);
        std::mt19937 random(1);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(random() % 2 == 0 ? 0 : 255, 40, 60));
        }
        // Corners of different colours: no border is trimmed off the part.
        picture.setPixel(part.topLeft(), qRgb(255, 40, 60));
        picture.setPixel(part.topRight(), qRgb(0, 40, 60));
        picture.setPixel(firstMark, markColour);
        picture.setPixel(secondMark, markColour);
        return picture;
    }

    bool shows(const QImage &picture)
    {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (view->pixel(onScreen({x, y})) != (picture.pixel(x, y) & 0xffffff))
                    return false;
            }
        }
        return true;
    }
};

} // namespace plum
