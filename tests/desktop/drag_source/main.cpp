#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <cstdio>

// A window from which files can be dragged, as from a file browser: what is dragged are the addresses in a
// file, one a line, read when the drag begins.
//   plum_drag_source LIST X,Y,WIDTH,HEIGHT
// On its standard output it says "dragging" when a drag begins, "taken" and "refused" as the window under the
// mouse answers, and at the end of each drag "dropped ACTION"; ACTION is 0 when nobody took it.

using namespace Qt::StringLiterals;

namespace {

class Source final : public QWidget
{
public:
    explicit Source(const QString &list)
        : m_list(list)
    {
    }

protected:
    void mousePressEvent(QMouseEvent *event) override { m_pressed = event->position(); }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if ((event->position() - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        QFile file(m_list);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read the list");
        QList<QUrl> addresses;
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (!line.isEmpty())
                addresses += QUrl(QString::fromUtf8(line));
        }
        auto *content = new QMimeData;
        content->setUrls(addresses);
        // It has to outlive this call: the other program asks for the content after the drop.
        auto *drag = new QDrag(this);
        drag->setMimeData(content);
        connect(drag, &QDrag::actionChanged, this,
            [](Qt::DropAction action) { say(action == Qt::IgnoreAction ? "refused" : "taken"); });
        say("dragging");
        const Qt::DropAction action = drag->exec(Qt::CopyAction);
        say(action == Qt::IgnoreAction ? "dropped 0" : "dropped 1");
    }

private:
    static void say(const char *what)
    {
        std::puts(what);
        std::fflush(stdout);
    }

    QString m_list;
    QPointF m_pressed;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3)
        qFatal("usage: plum_drag_source LIST X,Y,WIDTH,HEIGHT");
    const QStringList numbers = arguments[2].split(u',');
    Source source(arguments[1]);
    source.setWindowTitle(u"Drag source"_s);
    source.setGeometry(numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt());
    source.show();
    return QApplication::exec();
}
