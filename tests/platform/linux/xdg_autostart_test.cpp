#include "platform/linux/xdg_autostart.h"

#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class FolderAlone final : public Paths
{
public:
    QString programFolder() const override { return folder; }
    QString toSystem(const QString &path) const override { return path; }
    bool interpretsNames() const override { return false; }

    QString folder = u"/opt/plum"_s;
};

class XdgAutostartTest : public testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_config.path())); }
    void TearDown() override { qunsetenv("XDG_CONFIG_HOME"); }

    QString file() const { return m_config.path() + u"/autostart/plum.desktop"_s; }
    QByteArray content() const
    {
        QFile entry(file());
        return entry.open(QIODevice::ReadOnly) ? entry.readAll() : QByteArray();
    }

    FolderAlone paths;
    XdgAutostart autostart{paths};

private:
    QTemporaryDir m_config;
};

} // namespace

TEST_F(XdgAutostartTest, itIsAnEntryOfTheDesktop)
{
    EXPECT_FALSE(autostart.isOn());
    EXPECT_TRUE(autostart.setOn(true));
    EXPECT_TRUE(autostart.isOn());
    EXPECT_EQ(content(),
        "[Desktop Entry]\nType=Application\nName=Plum\nExec=\"/opt/plum/plum\"\nTryExec=/opt/plum/plum\n"
        "Icon=plum\n");
    EXPECT_TRUE(autostart.setOn(false));
    EXPECT_FALSE(autostart.isOn());
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(XdgAutostartTest, aPathMayHoldWhatTheFormatMarks)
{
    for (const QString &folder :
        {u"/home/a b"_s, u"/home/50%"_s, u"/home/a\"b"_s, u"/home/a\\b"_s, u"/home/$x`"_s, u"/home/李"_s}) {
        paths.folder = folder;
        EXPECT_TRUE(autostart.setOn(true));
        EXPECT_TRUE(autostart.isOn()) << folder.toStdString() << '\n' << content().toStdString();
    }
    EXPECT_TRUE(content().contains("Exec=\"/home/李/plum\""));
}

TEST_F(XdgAutostartTest, theEntryOfAnotherPlumIsReplacedAndNeverTakenOut)
{
    EXPECT_TRUE(autostart.setOn(true));
    paths.folder = u"/home/other"_s;
    EXPECT_FALSE(autostart.isOn());
    EXPECT_TRUE(autostart.setOn(false));
    EXPECT_TRUE(content().contains("/opt/plum/plum"));
    EXPECT_TRUE(autostart.setOn(true));
    EXPECT_TRUE(content().contains("/home/other/plum"));
}

TEST_F(XdgAutostartTest, whatCannotBeWrittenIsOff)
{
    QDir().mkpath(QFileInfo(file()).path());
    QDir().mkpath(file()); // a folder in the file's place
    EXPECT_FALSE(autostart.setOn(true));
    EXPECT_FALSE(autostart.isOn());
}

} // namespace plum
