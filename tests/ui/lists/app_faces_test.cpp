#include "ui/lists/app_faces.h"

#include "ui/launcher_bench.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class AppFacesTest : public testing::Test, protected recording::LauncherBench
{
protected:
    // What an app looks like once it has been read.
    AppFaces::Face seen(const QString &keyword)
    {
        bool isKnown = false;
        QObject::connect(&faces, &AppFaces::changed, &faces, [&] { isKnown = true; });
        faces.face(keyword, 30, 1);
        EXPECT_TRUE(waitUntil([&] { return isKnown; }));
        faces.disconnect();
        return faces.face(keyword, 30, 1);
    }

    MessageBoxes dialogs;
    AppLists lists;
    AppLibrary library{
        {platform.paths(), platform.textCodec(), platform.shell(), dialogs, installer, lists, listFile}};
    AppFaces faces{library, platform.paths()};
};

} // namespace

TEST_F(AppFacesTest, nothingIsReadWhileAnAppIsPainted)
{
    folder.addApp(u"a"_s, "//guide:words\r\n");
    EXPECT_EQ(faces.face(u"a"_s, 30, 1).summary, QString());
    EXPECT_EQ(seen(u"a"_s).summary, u"words"_s);
}

TEST_F(AppFacesTest, aPipeInThePlaceOfAnIconIsNotOpened)
{
    folder.addApp(u"a"_s, "//guide:words\r\n");
    ASSERT_EQ(mkfifo(folder.apps(u"a/icon.png"_s).toLocal8Bit().constData(), 0600), 0);
    const AppFaces::Face face = seen(u"a"_s);
    EXPECT_TRUE(face.icon.isNull());
    EXPECT_EQ(face.summary, u"words"_s);
}

TEST_F(AppFacesTest, ofAnEndlessFirstLineOnlyTheBeginningIsRead)
{
    folder.addApp(u"a"_s, "//guide:" + QByteArray(1 << 20, 'x'));
    EXPECT_EQ(seen(u"a"_s).summary.size(), 4096 - 8);
}

TEST_F(AppFacesTest, aCharacterThatIsCutDoesNotSpoilTheRest)
{
    folder.addApp(u"a"_s, "//guide:a" + QByteArray("\xE4\xBD\xA0").repeated(2000));
    EXPECT_EQ(seen(u"a"_s).summary, u'a' + QString(1362, QChar(0x4f60)));
}

TEST_F(AppFacesTest, anIconHasAtMost1024PixelsASide)
{
    for (const auto &[side, isShown] : {std::pair(1024, true), std::pair(1025, false)}) {
        const QString keyword = u"a%1"_s.arg(side);
        folder.addApp(keyword, "");
        QImage picture(side, side, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        ASSERT_TRUE(picture.save(folder.apps(keyword + u"/icon.png"_s)));
        EXPECT_EQ(!seen(keyword).icon.isNull(), isShown) << side;
    }
}

TEST_F(AppFacesTest, anIconHasAtMostAMebibyte)
{
    for (const auto &[size, isShown] : {std::pair(1 << 20, true), std::pair((1 << 20) + 1, false)}) {
        const QString keyword = u"a%1"_s.arg(size);
        folder.addApp(keyword, "");
        QImage picture(8, 8, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        const QString path = folder.apps(keyword + u"/icon.png"_s);
        ASSERT_TRUE(picture.save(path));
        ASSERT_TRUE(QFile::resize(path, size)); // what follows the picture is not looked at
        EXPECT_EQ(!seen(keyword).icon.isNull(), isShown) << size;
    }
}

TEST_F(AppFacesTest, aChangedAppIsReadAnew)
{
    folder.addApp(u"a"_s, "//guide:old\r\n");
    EXPECT_EQ(seen(u"a"_s).summary, u"old"_s);
    recording::writeBytes(folder.apps(u"a/main.wf"_s), "//guide:new\r\n");
    faces.forget();
    EXPECT_EQ(seen(u"a"_s).summary, u"new"_s);
}

} // namespace plum
