#include "ui/message_boxes.h"

#include "engine/launcher.h"

#include <QApplication>
#include <QMessageBox>

namespace plum {

void MessageBoxes::showMessage(const Message &message)
{
    QMessageBox box;
    box.setIcon(message.icon == MessageIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon);
    box.setWindowTitle(message.title.isEmpty() ? QCoreApplication::applicationName() : message.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint, message.systemModal);
    box.exec();
}

bool MessageBoxes::askYesNo(const QString &question, const QString &title)
{
    QMessageBox box(QMessageBox::Question, title, question, QMessageBox::Yes | QMessageBox::No);
    box.setTextFormat(Qt::PlainText);
    // Enter on a question about losing something must not lose it.
    box.setDefaultButton(QMessageBox::No);
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec() == QMessageBox::Yes;
}

} // namespace plum
