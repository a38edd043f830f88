#include <QApplication>
#include <QCloseEvent>
#include <QCommandLineParser>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

// A window that writes down what reaches it, one line an event, so that a test can see a desktop with the
// eyes of an ordinary program:
//   plum_probe LOG TITLE X,Y,WIDTH,HEIGHT [PICTURE X,Y]
// The picture is shown at that place in the window, both in physical pixels at every scaling.

using namespace Qt::StringLiterals;

namespace {

class Log final : public QObject
{
public:
    explicit Log(const QString &path)
        : m_file(path)
    {
        if (!m_file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qUtf8Printable(path));
    }

    void write(const QString &line)
    {
        m_file.write(line.toUtf8() + '\n');
        m_file.flush();
    }

protected:
    // Events of the native window, before Qt hands them to a widget.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (const auto *window = qobject_cast<QWindow *>(watched))
            describe(*window, *event);
        return false;
    }

private:
    void describe(const QWindow &window, const QEvent &event)
    {
        switch (event.type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            describeKey(static_cast<const QKeyEvent &>(event));
            break;
        case QEvent::MouseButtonPress:
            describeMouse(u"button down"_s, static_cast<const QMouseEvent &>(event));
            break;
        case QEvent::MouseButtonRelease:
            describeMouse(u"button up"_s, static_cast<const QMouseEvent &>(event));
            break;
        case QEvent::MouseButtonDblClick:
            describeMouse(u"double click"_s, static_cast<const QMouseEvent &>(event));
            break;
        case QEvent::MouseMove:
            describeMouse(u"motion"_s, static_cast<const QMouseEvent &>(event));
            break;
        case QEvent::FocusIn:
            write(u"focus in"_s);
            break;
        case QEvent::FocusOut:
            write(u"focus out"_s);
            break;
        case QEvent::Move:
        case QEvent::Resize:
            write(u"geometry %1 %2 %3 %4"_s.arg(window.x())
                      .arg(window.y())
                      .arg(window.width())
                      .arg(window.height()));
            break;
        case QEvent::WindowStateChange:
            write(window.windowStates() & Qt::WindowMinimized     ? u"minimised"_s
                    : window.windowStates() & Qt::WindowMaximized ? u"maximised"_s
                                                                  : u"normal"_s);
            break;
        case QEvent::Close:
            write(u"close"_s);
            break;
        default:
            break;
        }
    }

    void describeKey(const QKeyEvent &event)
    {
        if (event.isAutoRepeat())
            return;
        const QString text = event.text();
        write(u"key %1 %2 %3%4"_s.arg(event.type() == QEvent::KeyPress ? u"down"_s : u"up"_s)
                  .arg(event.nativeVirtualKey(), 0, 16)
                  .arg(event.modifiers().toInt() >> 24)
                  .arg(!text.isEmpty() && text.front().isPrint() ? u' ' + text : QString()));
    }

    void describeMouse(const QString &what, const QMouseEvent &event)
    {
        const QPoint at = event.globalPosition().toPoint();
        const int button = event.button() == Qt::LeftButton ? 1 : event.button() == Qt::RightButton ? 3 : 0;
        write(button == 0 ? u"%1 %2 %3"_s.arg(what).arg(at.x()).arg(at.y())
                          : u"%1 %2 %3 %4"_s.arg(what).arg(button).arg(at.x()).arg(at.y()));
    }

    QFile m_file;
};

// Shows a picture, or nothing where there is none.
class Window final : public QWidget
{
public:
    Window(const QString &picturePath, QPoint place)
        : m_picture(picturePath.isEmpty() ? QImage() : QImage(picturePath))
        , m_place(place)
    {
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (m_picture.isNull())
            return;
        m_picture.setDevicePixelRatio(devicePixelRatioF());
        QPainter(this).drawImage(QPointF(m_place) / devicePixelRatioF(), m_picture);
    }

private:
    QImage m_picture;
    QPoint m_place;
};

QPoint point(const QString &text)
{
    const QStringList numbers = text.split(u',');
    return {numbers.value(0).toInt(), numbers.value(1).toInt()};
}

QRect rectangle(const QString &text)
{
    const QStringList numbers = text.split(u',');
    return {numbers.value(0).toInt(), numbers.value(1).toInt(), numbers.value(2).toInt(),
        numbers.value(3).toInt()};
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4 && arguments.size() != 6)
        qFatal("usage: plum_probe LOG TITLE X,Y,WIDTH,HEIGHT [PICTURE X,Y]");

    Log log(arguments[1]);
    application.installEventFilter(&log);

    Window window(arguments.value(4), point(arguments.value(5)));
    window.setWindowTitle(arguments[2]);
    QVBoxLayout layout(&window);
    QLineEdit edit;
    layout.addWidget(&edit);
    layout.addStretch();
    window.setMouseTracking(true);
    QObject::connect(
        &edit, &QLineEdit::textChanged, &log, [&](const QString &text) { log.write(u"text "_s + text); });

    window.setGeometry(rectangle(arguments[3]));
    window.show();
    log.write(u"window %1"_s.arg(window.winId()));
    return QApplication::exec();
}
