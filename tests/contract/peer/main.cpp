#include "contract/contract_desktop.h"
#include "contract/peer/peer_desktop.h"
#include "platform/clipboard.h"
#include "platform/global_hotkey.h"
#include "platform/javascript.h"
#include "platform/platform.h"
#include "support/event_log.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

// Another program on the same desktop. The first argument is the file for what it has to say, the second its
// task:
//   window TITLE X,Y,W,H FILE    shows a window and writes down what reaches it; the key H makes it hang
//   until there is the file
//
//   copy FILE               puts the file's text on the clipboard, not through the port, and stays
//
//   copy-picture            the same with a picture
//
//   leave FILE              puts the file's text there through the port, and ends as plum does
//
//   paste                   says what is on the clipboard, not through the port, and ends
//
//   hold MODIFIERS KEY      holds a hotkey, through the port
//
//   arguments ...           says its arguments, each in brackets, and ends
//
//   command-line ...        says what follows these two words on its command line, which may be one argument

using namespace Qt::StringLiterals;
using plum::contract::PeerWindow;
using plum::test::EventLog;

namespace {

class Window final : public QWidget
{
public:
    Window(EventLog &log, const QString &title, const QRect &inside, const QString &going)
        : m_log(log)
        , m_wanted(inside)
        , m_going(going)
    {
        setWindowTitle(title);
        setGeometry(inside);
        // The window manager does not say when it has put the frame on, so its rectangle is looked at often.
        constexpr int lookAgain = 10; // milliseconds
        connect(&m_look, &QTimer::timeout, this, [this] { sayWhereItIs(); });
        m_look.start(lookAgain);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QRect square(0, 0, PeerWindow::cornerSize, PeerWindow::cornerSize);
        QPainter painter(this);
        painter.fillRect(rect(), QRgb(PeerWindow::background));
        painter.fillRect(square, QRgb(PeerWindow::topLeftCorner));
        painter.fillRect(square.translated(width() - square.width(), height() - square.height()),
            QRgb(PeerWindow::bottomRightCorner));
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        // A typed character of another script may have the key's number on Windows.
        if (event->text() == "h"_L1) {
            m_log.write(u"hangs"_s);
            while (!QFile::exists(m_going))
                QThread::msleep(5);
        }
    }

private:
    void sayWhereItIs()
    {
        const auto view = plum::contract::viewOf(*this);
        if (!view)
            return;
        if (std::exchange(m_handle, view->handle) != view->handle) {
            m_log.write(u"window %1"_s.arg(view->handle));
            plum::contract::place(*view, m_wanted);
            return;
        }
        m_log.setShift(view->inside.topLeft() - geometry().topLeft());
        const auto asText = [](const QRect &r) {
            return u"%1,%2,%3,%4"_s.arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
        };
        const QString now = u"frame "_s + asText(view->frame) + u"\ninside "_s + asText(view->inside);
        if (std::exchange(m_said, now) != now)
            m_log.write(now);
    }

    EventLog &m_log;
    QRect m_wanted;
    QString m_going;
    plum::WindowHandle m_handle = 0;
    QTimer m_look;
    QString m_said;
};

QString content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

int main(int argc, char **argv)
{
    const QString line = plum::commandLine(argc, argv);
    if (const QString mark = u" command-line "_s; line.contains(mark)) {
        EventLog(line.section(mark, 0, 0), EventLog::KeyNames::Portable)
            .write(u"line "_s + line.section(mark, 1));
        return 0;
    }

    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString task = arguments.value(2);
    EventLog log(arguments.value(1), EventLog::KeyNames::Portable);

    if (task == "arguments"_L1) {
        log.write(u"arguments <"_s + arguments.mid(3).join(u"><"_s) + u'>');
        return 0;
    }
    if (task == "paste"_L1) {
        log.write(u"pasted "_s + QString::fromLatin1(plum::contract::clipboardText().toUtf8().toHex()));
        return 0;
    }
    if (task == "window"_L1) {
        application.installEventFilter(&log);
        Window window(
            log, arguments.value(3), plum::test::rectangleFromText(arguments.value(4)), arguments.value(5));
        window.show();
        return QApplication::exec();
    }

    const auto platform = plum::createPlatform(QString::fromLocal8Bit(argv[0]));
    if (task == "copy"_L1) {
        plum::contract::setClipboardText(content(arguments.value(3)));
        log.write(u"copied yes"_s);
    } else if (task == "copy-picture"_L1) {
        plum::contract::setClipboardPicture();
        log.write(u"copied yes"_s);
    } else if (task == "leave"_L1) {
        platform->clipboard().setText(content(arguments.value(3)));
        platform->releaseDesktop();
        log.write(u"left yes"_s);
        return 0;
    } else if (task == "endless"_L1) {
        QTimer::singleShot(20, [] { QApplication::exit(); });
        const bool ok = platform->javaScript().evaluate(u"while (true) ;"_s).ok;
        log.write(ok ? u"evaluated yes"_s : u"evaluated no"_s);
        std::_Exit(0); // as plum does
    } else if (task == "hold"_L1) {
        const bool holds
            = platform->hotkey().registerHotkey(arguments.value(3).toUInt(), arguments.value(4).toUInt());
        log.write(holds ? u"holds yes"_s : u"holds no"_s);
    } else {
        return 2;
    }
    return QApplication::exec();
}
