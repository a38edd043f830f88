#include "stopping/hand_options.h"

#include "platform/global_hotkey.h"
#include "platform/recording/recording_platform.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

class HandOptionsTest : public testing::Test
{
protected:
    HandOptionsTest() { platform.paths().folder = folder.path(); }

    void write(const QByteArray &content)
    {
        QDir(folder.path()).mkpath(u"config/load"_s);
        QFile file(folder.path() + u"/config/load/options.ini"_s);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        options.read();
    }

    QTemporaryDir folder;
    recording::RecordingPlatform platform;
    HandOptions options{platform};
};

} // namespace

TEST_F(HandOptionsTest, AreOffWithoutAFile)
{
    options.read();
    EXPECT_EQ(options.hotkey(), StopHotkey());
    EXPECT_FALSE(options.yields());
    EXPECT_FALSE(options.isScoped(u"mail"_s));
    EXPECT_FALSE(options.isScoped({}));
}

TEST_F(HandOptionsTest, AreReadFromTheirSections)
{
    write("[stop]\r\nhotkey=Ctrl+Alt+S\r\nyield=On\r\n");
    EXPECT_EQ(options.hotkey(), (StopHotkey{GlobalHotkey::Control | GlobalHotkey::Alt, 'S'}));
    EXPECT_TRUE(options.yields());
    EXPECT_FALSE(options.isScoped(u"mail"_s));
    write("[stop]\r\nyield=off\r\n");
    EXPECT_FALSE(options.yields());
    EXPECT_EQ(options.hotkey(), StopHotkey());
}

TEST_F(HandOptionsTest, ScopeAllRunsOrThoseOfAnApp)
{
    write("[scoped]\r\nmail=on\r\n");
    EXPECT_TRUE(options.isScoped(u"mail"_s));
    EXPECT_FALSE(options.isScoped(u"other"_s));
    EXPECT_FALSE(options.isScoped({}));
    write("[stop]\r\nscoped=on\r\n[scoped]\r\nmail=off\r\n");
    EXPECT_FALSE(options.isScoped(u"mail"_s));
    EXPECT_TRUE(options.isScoped(u"other"_s));
    EXPECT_TRUE(options.isScoped({}));
}
