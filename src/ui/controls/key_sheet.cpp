#include "ui/controls/key_sheet.h"

#include "look/fitting_area.h"
#include "look/moveit.h"
#include "look/picture_button.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>

#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

struct Row
{
    const char *keys;
    const char *meaning;
};

constexpr std::array rows{
    Row{QT_TRANSLATE_NOOP("plum::KeySheet", "Enter"),
        QT_TRANSLATE_NOOP("plum::KeySheet", "runs the marked app, or the selected one of a list")},
    Row{QT_TRANSLATE_NOOP("plum::KeySheet", "Down, Up, Left"),
        QT_TRANSLATE_NOOP("plum::KeySheet", "into the list and back to the keyword box")},
    Row{"Esc",
        QT_TRANSLATE_NOOP("plum::KeySheet", "one step back: panel, list, keyword box, empty box, hidden")},
    Row{"Ctrl+N", QT_TRANSLATE_NOOP("plum::KeySheet", "new app")},
    Row{"Ctrl+E", QT_TRANSLATE_NOOP("plum::KeySheet", "edit the script")},
    Row{"Ctrl+S", QT_TRANSLATE_NOOP("plum::KeySheet", "save the script")},
    Row{"F5", QT_TRANSLATE_NOOP("plum::KeySheet", "run the app, in the editor what it shows")},
    Row{"F8, Shift+F8", QT_TRANSLATE_NOOP("plum::KeySheet", "what was found next or before, in the editor")},
    Row{"F9", QT_TRANSLATE_NOOP("plum::KeySheet", "hold runs before this line, in the editor")},
    Row{"F10, F11, Shift+F11",
        QT_TRANSLATE_NOOP("plum::KeySheet", "one line on, into a part, out of it, in the editor")},
    Row{"Ctrl+F10, F6",
        QT_TRANSLATE_NOOP("plum::KeySheet", "run to this line, hold the run that goes on, in the editor")},
    Row{"Shift+F5", QT_TRANSLATE_NOOP("plum::KeySheet", "stop the run that is followed, in the editor")},
    Row{QT_TRANSLATE_NOOP("plum::KeySheet", "Ctrl+Space, Alt+Down"),
        QT_TRANSLATE_NOOP("plum::KeySheet", "what can stand here, in the editor; Enter or Tab takes it")},
    Row{"Ctrl+P",
        QT_TRANSLATE_NOOP("plum::KeySheet", "pick a point or a picture from the screen, in the editor")},
    Row{"F2", QT_TRANSLATE_NOOP("plum::KeySheet", "rename, in a list")},
    Row{"Del", QT_TRANSLATE_NOOP("plum::KeySheet", "delete, in a list; it asks first")},
    Row{QT_TRANSLATE_NOOP("plum::KeySheet", "Menu, Shift+F10"),
        QT_TRANSLATE_NOOP("plum::KeySheet", "the menu of a list")},
    Row{"F1", QT_TRANSLATE_NOOP("plum::KeySheet", "the manual")},
    Row{"Shift+F1", QT_TRANSLATE_NOOP("plum::KeySheet", "this page")},
};

constexpr int usualWidth = 560; // pixels; all texts have one line there

} // namespace

KeySheet::KeySheet(QWidget *owner)
    : BorderlessWindow(owner, Qt::Dialog)
{
    setObjectName(u"keysheet"_s);
    setWindowTitle(tr("Keys"));
    setAttribute(Qt::WA_DeleteOnClose);
    (new moveit(*this))->installOn(*this);

    QWidget *content = (new FittingArea(this))->content();
    auto *heading = new QLabel(tr("Keys"), content);
    heading->setProperty("heading", true);
    auto *back = new PictureButton(u"closekeys"_s, PictureButton::Picture::Close, tr("Close"), content);
    connect(back, &PictureButton::clicked, this, &QWidget::close);
    const bool wraps = isNarrow(usualWidth);
    auto *grid = new QGridLayout(content);
    grid->setColumnStretch(1, 1);
    grid->setContentsMargins(18, 12, 12, 16);
    grid->setHorizontalSpacing(18);
    grid->addWidget(heading, 0, 0);
    grid->addWidget(back, 0, 1, Qt::AlignRight);
    for (int line = 1; const Row &row : rows) {
        auto *meaning = new QLabel(tr(row.meaning), content);
        meaning->setProperty("quiet", true);
        meaning->setWordWrap(wraps);
        grid->addWidget(new QLabel(tr(row.keys), content), line, 0);
        grid->addWidget(meaning, line, 1);
        ++line;
    }
}

void KeySheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F1)
        close();
    else
        BorderlessWindow::keyPressEvent(event);
}

} // namespace plum
