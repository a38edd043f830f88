#include "ui/asking/message_boxes.h"

#include "engine/launcher.h"
#include "look/app_icon.h"
#include "look/theme.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int boxPicture = 40; // logical pixels
constexpr QSize windowFrame(10, 40); // logical pixels, what a window manager may put around a box

// A disc with a cross for what failed, with an exclamation mark for what is to be thought about; the
// program's own picture for all else.
QPixmap pictureFor(QMessageBox::Icon icon, const Theme &theme, qreal scale)
{
    const bool isFailure = icon == QMessageBox::Critical;
    if (!isFailure && icon != QMessageBox::Warning)
        return appPicture(boxPicture, scale);
    QPixmap picture(QSize(boxPicture, boxPicture) * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isFailure ? theme.error : theme.warning);
    painter.drawEllipse(QRectF(3, 3, 34, 34));
    painter.setPen(QPen(theme.window, 4, Qt::SolidLine, Qt::RoundCap));
    if (isFailure)
        painter.drawLines({QLineF(14, 14, 26, 26), QLineF(26, 14, 14, 26)});
    else
        painter.drawLines({QLineF(20, 11, 20, 22), QLineF(20, 29, 20, 29.1)});
    return picture;
}

// Looks like the program's other windows.
class Box final : public QMessageBox
{
public:
    Box(Icon icon, const QString &title, const QString &text, StandardButtons buttons)
        : QMessageBox(icon, title.isEmpty() ? u"Plum"_s : title, text, buttons)
    {
        const Theme theme = Theme::of(QGuiApplication::palette());
        setStyleSheet(theme.styleSheet()
            + u"QMessageBox { background: %1 } QMessageBox QLabel { color: %2 }"_s.arg(
                theme.window.name(), theme.text.name()));
        setWindowIcon(appIcon());
        setTextFormat(Qt::PlainText);
        setWindowModality(Qt::ApplicationModal);
        const std::pair<StandardButton, QString> captions[]
            = {{Ok, MessageBoxes::tr("OK")}, {Yes, MessageBoxes::tr("Yes")}, {No, MessageBoxes::tr("No")}};
        for (const auto &[which, caption] : captions) {
            if (QAbstractButton *shown = button(which))
                shown->setText(caption);
        }
        showPicture();
        // A screen reader meets no node that says nothing.
        for (QWidget *each : std::initializer_list<QWidget *>{
                 findChild<QLabel *>(u"qt_msgboxex_icon_label"_s), findChild<QDialogButtonBox *>()}) {
            if (each)
                each->setAccessibleName(windowTitle());
        }
    }

protected:
    void showEvent(QShowEvent *event) override
    {
        QEvent measure(QEvent::LayoutRequest);
        QMessageBox::event(&measure);
        const QSize room = screen()->availableSize() - windowFrame;
        if (height() > room.height() || width() > room.width())
            letTextScroll(room);
        QMessageBox::showEvent(event);
    }

    // The box puts a picture of the system's into its place whenever the style changes.
    void changeEvent(QEvent *event) override
    {
        QMessageBox::changeEvent(event);
        if (event->type() == QEvent::StyleChange && icon() != NoIcon)
            showPicture();
    }

private:
    // Only a picture that is set as the box's own gets a place where it has no icon.
    void showPicture()
    {
        const QPixmap picture
            = pictureFor(icon(), Theme::of(QGuiApplication::palette()), devicePixelRatioF());
        if (icon() == NoIcon)
            setIconPixmap(picture);
        else if (auto *label = findChild<QLabel *>(u"qt_msgboxex_icon_label"_s))
            label->setPixmap(picture);
    }

    // A long text on a small screen must not push the buttons off it.
    void letTextScroll(QSize room)
    {
        auto *grid = qobject_cast<QGridLayout *>(layout());
        auto *text = findChild<QLabel *>(u"qt_msgbox_label"_s);
        if (!grid || !text)
            return;
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(grid->indexOf(text), &row, &column, &rows, &columns);
        auto *area = new QScrollArea(this);
        area->setObjectName(u"text"_s);
        area->setFrameShape(QFrame::NoFrame);
        area->setWidgetResizable(true);
        area->setStyleSheet(u"QScrollArea { background: transparent; }"_s);
        auto *content = new QWidget;
        area->setWidget(content);
        area->viewport()->setAutoFillBackground(false);
        content->setAutoFillBackground(false);
        auto *lines = new QVBoxLayout(content);
        lines->setContentsMargins({});
        for (QLabel *label : {text, findChild<QLabel *>(u"qt_msgbox_informativelabel"_s)}) {
            if (!label)
                continue;
            grid->removeWidget(label);
            lines->addWidget(label);
            label->setWordWrap(true);
            label->show();
        }
        for (QWidget *each : std::initializer_list<QWidget *>{content, area})
            each->setAccessibleName(windowTitle());
        // Wide enough for the box to wrap the text, which it does from half of the screen on.
        constexpr int besideText = 110;
        constexpr int widest = 500;
        const int wide = std::min(room.width() - besideText, widest);
        area->setMinimumWidth(wide);
        const QMargins margins = grid->contentsMargins();
        const int around = margins.top() + margins.bottom() + 2 * grid->verticalSpacing()
            + findChild<QDialogButtonBox *>()->sizeHint().height();
        const int bar = area->verticalScrollBar()->sizeHint().width();
        area->setFixedHeight(std::min(room.height() - around, lines->totalHeightForWidth(wide - bar)));
        grid->addWidget(area, 0, column, 2, 1);
        area->show();
    }
};

} // namespace

void MessageBoxes::showMessage(const Message &message)
{
    Box box(message.icon == MessageIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon,
        message.title, message.text, QMessageBox::Ok);
    box.setInformativeText(message.meaning);
    box.setWindowFlag(Qt::WindowStaysOnTopHint, message.systemModal);
    m_messages.push_back(&box);
    box.exec();
    m_messages.pop_back();
}

void MessageBoxes::dismissMessages()
{
    for (QMessageBox *message : m_messages)
        message->reject();
}

bool MessageBoxes::askToDelete(const QString &question, const QString &title, const QString &keyword)
{
    Box box(QMessageBox::Question, title, question, QMessageBox::Yes | QMessageBox::No);
    // What the question means, in the language of the session, and of what.
    box.setInformativeText(tr("Delete \"%1\"?").arg(keyword));
    // Enter on a question about losing something must not lose it.
    box.setDefaultButton(QMessageBox::No);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec() == QMessageBox::Yes;
}

bool MessageBoxes::askToRun(const QString &keyword, const QString &reason)
{
    Box box(QMessageBox::Warning, {}, tr("The store has taken this version of \"%1\" back.").arg(keyword),
        QMessageBox::Yes | QMessageBox::No);
    box.setInformativeText(
        reason.isEmpty() ? tr("Run it all the same?") : reason + u"\n\n"_s + tr("Run it all the same?"));
    box.setDefaultButton(QMessageBox::No);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec() == QMessageBox::Yes;
}

bool MessageBoxes::tellSheet(const QString &heading, const QString &sentences, bool canBeTakenBack)
{
    Box box(QMessageBox::NoIcon, tr("What may it do?"), heading, QMessageBox::Close);
    box.setInformativeText(sentences);
    QAbstractButton *takeBack
        = canBeTakenBack ? box.addButton(tr("Take back"), QMessageBox::DestructiveRole) : nullptr;
    if (takeBack)
        takeBack->setObjectName(u"takeBack"_s);
    box.setDefaultButton(QMessageBox::Close);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    return takeBack && box.clickedButton() == takeBack;
}

MessageBoxes::ScriptAnswer MessageBoxes::askRunOrEdit(const QString &systemPath)
{
    Box box(QMessageBox::Question, {}, tr("Run or edit \"%1\"?").arg(systemPath.section(u'/', -1)),
        QMessageBox::Cancel);
    box.setInformativeText(systemPath + u"\n\n"_s + tr("It runs as a program of yours: nothing limits it."));
    QPushButton *run = box.addButton(tr("Run"), QMessageBox::AcceptRole);
    // It may be a stranger's: Enter must not run it.
    QPushButton *edit = box.addButton(tr("Edit"), QMessageBox::ActionRole);
    run->setObjectName(u"run"_s);
    edit->setObjectName(u"edit"_s);
    box.button(QMessageBox::Cancel)->setText(tr("Cancel"));
    box.setDefaultButton(edit);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    return box.clickedButton() == run ? ScriptAnswer::Run
        : box.clickedButton() == edit ? ScriptAnswer::Edit
                                      : ScriptAnswer::Neither;
}

MessageBoxes::Unsaved MessageBoxes::askUnsaved(const QString &question)
{
    Box box(
        QMessageBox::Question, {}, question, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.button(QMessageBox::Save)->setText(tr("Save"));
    box.button(QMessageBox::Discard)->setText(tr("Discard"));
    box.button(QMessageBox::Cancel)->setText(tr("Go on"));
    box.setDefaultButton(QMessageBox::Save);
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
