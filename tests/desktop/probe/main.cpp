#include "support/event_log.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>
#include <QWidget>

// A window that writes down what reaches it, one line an event, so that a test can see a desktop with the
// eyes of an ordinary program:
//   plum_probe LOG TITLE X,Y,WIDTH,HEIGHT [PICTURE X,Y]
// The picture is shown at that place in the window, both in physical pixels at every scaling.

using namespace Qt::StringLiterals;
using plum::test::EventLog;

namespace {

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

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4 && arguments.size() != 6)
        qFatal("usage: plum_probe LOG TITLE X,Y,WIDTH,HEIGHT [PICTURE X,Y]");

    EventLog log(arguments[1], EventLog::KeyNames::Native);
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

    window.setGeometry(plum::test::rectangleFromText(arguments[3]));
    window.show();
    log.write(u"window %1"_s.arg(window.winId()));
    return QApplication::exec();
}
