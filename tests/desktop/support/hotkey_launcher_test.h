#pragma once

#include "desktop/support/desktop_test.h"

#include <QDir>

namespace plum {

// The real launcher in a program folder of its own, whose hotkey is Alt+Z, under openbox.
class HotkeyLauncherTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        startDesktop(QStringLiteral("openbox"));
        ASSERT_TRUE(QDir().mkpath(programFolder()));
        ASSERT_TRUE(QFile::link(QStringLiteral(PLUM_PROGRAM), program()));
        write(QStringLiteral("config/load/set.ini"), "[hotkey]\r\nhotkey=Alt+Z\r\n");
    }

    void TearDown() override
    {
        m_launcher.terminate();
        EXPECT_TRUE(m_launcher.waitForFinished());
        DesktopTest::TearDown();
    }

    QString programFolder() const { return folder() + QStringLiteral("/program"); }
    QString program() const { return programFolder() + QStringLiteral("/plum"); }

    // Writes a file below the program folder.
    void write(const QString &name, const QByteArray &content)
    {
        const QString path = programFolder() + u'/' + name;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    // Starts the launcher and waits until it is shown and has the keyboard.
    void startLauncher()
    {
        server().start(m_launcher, program());
        ASSERT_TRUE(eventually([&] { return isShown() && hasKeyboard(); }));
    }

    virtual bool isShown() = 0;
    virtual bool hasKeyboard() = 0;

    QProcess m_launcher;
};

} // namespace plum
