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
        EXPECT_TRUE(m_launcher.waitForFinished(test::patience));
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

    // Starts the launcher and waits until it is shown and has the keyboard, and has drawn that: before, a
    // press of its hotkey would fetch it.
    void startLauncher()
    {
        server().start(m_launcher, program());
        ASSERT_TRUE(eventually([&] { return isShown() && hasKeyboard() && keywordBoxLooksFocused(); }));
    }

    xcb_window_t window() { return view->windowTitled("Plum"); }

    // Whether the line around the keyword box, which is at the top of the window, is drawn as that of a
    // control with the keyboard.
    bool keywordBoxLooksFocused()
    {
        constexpr uint32_t accent = 0x85326f;
        const QPoint corner = view->clientRectangle(window()).topLeft();
        for (int y = 30; y < 80; ++y) {
            if (view->pixel(corner + QPoint(220, y)) == accent)
                return true;
        }
        return false;
    }

    virtual bool isShown() = 0;
    virtual bool hasKeyboard() = 0;

    QProcess m_launcher;
};

} // namespace plum
