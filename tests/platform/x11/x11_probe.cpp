#include "platform/clipboard.h"
#include "platform/global_hotkey.h"
#include "platform/platform.h"
#include "platform/shell.h"

#include <QFile>
#include <QGuiApplication>
#include <QWindow>

#include <cstdio>

// Does what its first argument says with the ports of this system, and ends as plum does.
//   x11_probe set-clipboard     puts its standard input on the clipboard
//   x11_probe clear-clipboard
//   x11_probe open PROGRAM      starts a program
//   x11_probe hotkey            says "registered" when it has Alt+Z, and "fired" for each press, until the
//   display goes
// or shows a window until the display goes:
//   x11_probe window TITLE
int main(int argc, char **argv)
{
    using namespace Qt::StringLiterals;

    const QGuiApplication application(argc, argv);
    const auto platform = plum::createPlatform(QString::fromLocal8Bit(argv[0]));
    const QString task = QCoreApplication::arguments().value(1);
    if (task == u"set-clipboard") {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly))
            return 1;
        platform->clipboard().setText(QString::fromUtf8(input.readAll()));
    } else if (task == u"clear-clipboard") {
        platform->clipboard().clear();
    } else if (task == u"open") {
        if (!platform->shell().open(QCoreApplication::arguments().value(2), {}, plum::ShowState::Normal))
            return 1;
    } else if (task == u"hotkey") {
        const auto say = [](const char *what) {
            std::puts(what);
            std::fflush(stdout);
        };
        QObject::connect(&platform->hotkey(), &plum::GlobalHotkey::fired, [say] { say("fired"); });
        if (!platform->hotkey().registerHotkey(plum::GlobalHotkey::Alt, 'Z'))
            return 1;
        say("registered");
        return QGuiApplication::exec();
    } else if (task == u"window") {
        QWindow window;
        window.setTitle(QCoreApplication::arguments().value(2));
        window.resize(200, 100);
        window.show();
        return QGuiApplication::exec();
    } else {
        return 2;
    }
    platform->releaseDesktop();
    return 0;
}
