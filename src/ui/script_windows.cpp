#include "ui/script_windows.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

ScriptWindows::~ScriptWindows()
{
    delete m_box;
}

QWidget *ScriptWindows::freshBox()
{
    delete m_box;
    m_box = new QWidget(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint);
    m_box->setObjectName(u"shurubox"_s);
    m_box->setWindowTitle(QCoreApplication::applicationName());
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    // Escape abandons the suspended run.
    QObject::connect(
        new QShortcut(Qt::Key_Escape, m_box), &QShortcut::activated, m_box, [box = m_box] { box->close(); });
    return m_box;
}

QString ScriptWindows::inputEntryText() const
{
    return m_entry ? m_entry->text() : QString();
}

void ScriptWindows::showInput(const QString &prompt, const QString &variable)
{
    QWidget *box = freshBox();
    auto *title = new QLabel(prompt, box);
    title->setObjectName(u"title"_s);
    title->setTextFormat(Qt::PlainText);
    title->setWordWrap(true);
    m_entry = new QLineEdit(box);
    m_entry->setObjectName(u"Text1"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, box);

    auto *layout = new QVBoxLayout(box);
    layout->addWidget(title);
    layout->addWidget(m_entry);
    layout->addWidget(buttons);

    const auto confirm = [this, box, variable] {
        const QString text = m_entry->text();
        box->close();
        m_actions.confirmInput(variable, text);
    };
    QObject::connect(m_entry, &QLineEdit::returnPressed, box, confirm);
    QObject::connect(buttons, &QDialogButtonBox::accepted, box, confirm);
    QObject::connect(buttons, &QDialogButtonBox::rejected, box, [this] { endProcess(); });
    box->show();
    box->activateWindow();
    m_entry->setFocus();
}

void ScriptWindows::showTip(const QString &text)
{
    QWidget *box = freshBox();
    auto *tip = new QLabel(text, box);
    tip->setObjectName(u"tipsbox"_s);
    tip->setTextFormat(Qt::PlainText);
    tip->setWordWrap(true);
    tip->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, box);

    auto *layout = new QVBoxLayout(box);
    layout->addWidget(tip);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, box, [this] { endProcess(); });
    box->show();
}

void ScriptWindows::showMessage(const Message &message)
{
    QMessageBox box;
    box.setIcon(message.icon == MessageIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon);
    box.setWindowTitle(message.title.isEmpty() ? QCoreApplication::applicationName() : message.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    if (message.systemModal) {
        box.setWindowModality(Qt::ApplicationModal);
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    box.exec();
}

} // namespace plum
