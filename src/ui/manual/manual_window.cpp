#include "ui/manual/manual_window.h"

#include "look/moveit.h"
#include "look/picture_button.h"
#include "look/placeholder_ink.h"
#include "ui/manual/manual_page.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualSize(760, 620);
constexpr int findWidth = 230; // logical pixels
const QString firstPage = u"scripting.md"_s;

} // namespace

ManualWindow::ManualWindow(QWidget *owner)
    : BorderlessWindow(owner, Qt::Dialog)
    , m_text(new QTextBrowser(this))
    , m_wanted(new QLineEdit(this))
{
    setObjectName(u"manual"_s);
    setWindowTitle(tr("Manual"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_text->setObjectName(u"text"_s);
    m_text->setAccessibleName(tr("Manual"));
    m_text->setOpenLinks(false);
    m_text->setFrameShape(QFrame::NoFrame);
    m_wanted->setObjectName(u"wanted"_s);
    m_wanted->setPlaceholderText(tr("Find in this page (Ctrl+F)"));
    m_wanted->setAccessibleName(tr("Find in this page (Ctrl+F)"));
    m_wanted->setFixedWidth(findWidth);
    keepPlaceholderReadable(*m_wanted);
    auto *heading = new QLabel(tr("Manual"), this);
    heading->setProperty("heading", true);
    using Picture = PictureButton::Picture;
    auto *back = new PictureButton(u"backpage"_s, Picture::Back, tr("Back"), this);
    auto *closes = new PictureButton(u"closemanual"_s, Picture::Close, tr("Close (Esc)"), this);

    auto *head = new QHBoxLayout;
    head->addWidget(back);
    head->addWidget(heading, 1);
    head->addWidget(m_wanted);
    head->addWidget(closes);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 10, 12, 14);
    column->addLayout(head);
    column->addWidget(m_text, 1);
    (new moveit(*this))->installOn(*this);

    connect(back, &PictureButton::clicked, this, [this] {
        if (!m_before.isEmpty())
            open(m_before.takeLast(), {});
    });
    connect(closes, &PictureButton::clicked, this, &QWidget::close);
    connect(m_text, &QTextBrowser::anchorClicked, this, &ManualWindow::follow);
    connect(m_wanted, &QLineEdit::textChanged, this, [this] {
        m_text->moveCursor(QTextCursor::Start);
        findNext();
    });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        m_wanted->setFocus();
        m_wanted->selectAll();
    });
    connect(this, &BorderlessWindow::themeChanged, this, [this] { open(m_page, {}); });
}

void ManualWindow::bringUp()
{
    if (m_page.isEmpty())
        open(firstPage, {});
    if (!isVisible()) {
        resize(fitting(usualSize));
        wincenter();
    }
    show();
    raise();
    activateWindow();
    m_text->setFocus();
}

void ManualWindow::open(const QString &page, const QString &heading)
{
    if (page != m_page || heading.isEmpty()) {
        m_page = page;
        layOutManual(*m_text->document(), manualPage(page), theme());
        m_text->moveCursor(QTextCursor::Start);
    }
    if (!heading.isEmpty())
        m_text->scrollToAnchor(heading);
}

void ManualWindow::follow(const QUrl &link)
{
    const QString page = link.path().isEmpty() ? m_page : link.path();
    if (!link.scheme().isEmpty() || manualPage(page).isEmpty())
        return;
    if (page != m_page)
        m_before += m_page;
    open(page, link.fragment());
}

// From where the last find ended, and once more from the beginning.
void ManualWindow::findNext()
{
    const QString wanted = m_wanted->text();
    if (wanted.isEmpty() || m_text->find(wanted))
        return;
    m_text->moveCursor(QTextCursor::Start);
    m_text->find(wanted);
}

void ManualWindow::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F1)
        close();
    else if ((isEnter && m_wanted->hasFocus()) || event->key() == Qt::Key_F3)
        findNext();
    else
        BorderlessWindow::keyPressEvent(event);
}

} // namespace plum
