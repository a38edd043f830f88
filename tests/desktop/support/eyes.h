#pragma once

#include <QJsonObject>
#include <QLocalSocket>
#include <QProcess>
#include <QRect>
#include <QStringList>

#include <functional>
#include <vector>

namespace plum {

// One control, window or menu item of a running program as the user sees it.
struct Control
{
    QString name;
    QString window; // the name of the window or menu that it is on
    QRect place; // on the screen
    bool shown = false;
    bool enabled = false;
    bool focus = false; // has the keyboard
    bool checked = false;
    bool topmost = false;
    int caret = 0;
    int icon = 0; // a QMessageBox::Icon
    quint32 id = 0; // of a window, on the server
    QString text; // of a list, the selected item
    QString title;
    QString toolTip;
    QStringList items;
    std::vector<QRect> rows; // of the items

    QPoint middle() const { return place.center(); }
};

// Looks at the controls of another process, in which the plugin of the same name serves.
class Eyes
{
public:
    // `program` makes the socket while it comes up.
    Eyes(QProcess &program, const QString &socket)
        : m_program(program)
        , m_path(socket)
    {
    }

    // What is there right now; nothing when the program does not answer.
    std::vector<Control> look();

    // By "window/name", e.g. "frmSet/Text8". Not shown when there is none of that name; a shown one goes
    // before others of its name.
    Control see(const QString &path);

private:
    QProcess &m_program;
    QString m_path;
    QLocalSocket m_socket;
};

} // namespace plum
