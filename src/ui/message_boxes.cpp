#include "ui/message_boxes.h"

#include "engine/launcher.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

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

MessageBoxes::Unsaved MessageBoxes::askUnsaved(const QString &question)
{
    QMessageBox box(QMessageBox::Question, QCoreApplication::applicationName(), question,
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Save)->setText(QCoreApplication::translate("plum::MessageBoxes", "Save"));
    box.button(QMessageBox::Discard)->setText(QCoreApplication::translate("plum::MessageBoxes", "Discard"));
    box.button(QMessageBox::Cancel)->setText(QCoreApplication::translate("plum::MessageBoxes", "Go on"));
    box.setDefaultButton(QMessageBox::Save);
    box.setWindowModality(Qt::ApplicationModal);
    switch (box.exec()) {
    case QMessageBox::Save:
        return Unsaved::Save;
    case QMessageBox::Discard:
        return Unsaved::Discard;
    default:
        return Unsaved::GoOn;
    }
}

} // namespace plum
