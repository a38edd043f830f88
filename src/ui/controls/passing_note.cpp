#include "ui/controls/passing_note.h"

#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds shownFor{8};
constexpr int noteWidth = 340; // logical pixels
constexpr int distance = 24; // from the edges of the screen
constexpr int longestWord = 24; // characters that fit into a line

// A label breaks its lines between words alone, and a keyword may be one of 255 characters.
QString breakable(const QString &text)
{
    constexpr QChar mayBreak(0x200b);
    QString broken;
    int run = 0;
    for (const QChar c : text) {
        run = c.isSpace() ? 0 : run + 1;
        broken += c;
        if (run > 0 && run % longestWord == 0 && !c.isHighSurrogate())
            broken += mayBreak;
    }
    return broken;
}

} // namespace

PassingNote::PassingNote(const QString &text)
    : BorderlessWindow(nullptr, Qt::ToolTip | Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(u"passingnote"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    auto *label = new QLabel(breakable(text), this);
    label->setAccessibleName(text);
    label->setObjectName(u"text"_s);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 12, 14, 12);
    column->addWidget(label);
    QTimer::singleShot(shownFor, this, &QWidget::close);
}

void PassingNote::tell(const QString &text)
{
    auto *note = new PassingNote(text);
    note->setFixedSize(noteWidth, note->layout()->totalHeightForWidth(noteWidth));
    const QRect screen = note->screenInUse()->availableGeometry();
    note->move(screen.bottomRight() - QPoint(note->width() + distance, note->height() + distance));
    note->show();
}

void PassingNote::mousePressEvent(QMouseEvent *)
{
    close();
}

} // namespace plum
