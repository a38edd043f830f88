// The peer of the launcher's start: the least that Qt's widgets need for a window with a line to type into.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    column->addWidget(new QLabel(QStringLiteral("Keyword")));
    auto *entry = new QLineEdit;
    column->addWidget(entry);
    window.resize(440, 452);
    entry->setFocus();
    window.show();
    return QApplication::exec();
}
