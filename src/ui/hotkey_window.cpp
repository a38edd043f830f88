#include "ui/hotkey_window.h"

#include "engine/text_functions.h"
#include "library/settings_file.h"
#include "look/fitting_area.h"
#include "look/moveit.h"
#include "look/picture_button.h"
#include "ui/sethotkey.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// A drop-down list with an arrow of its own: the window's style leaves none.
class LetterBox final : public QComboBox
{
public:
    using QComboBox::QComboBox;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QComboBox::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPen pen(palette().color(QPalette::Text), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        const QPointF tip(width() - 14, height() / 2.0 + 2.5);
        const std::array points{tip - QPointF(4, 4), tip, tip + QPointF(4, -4)};
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
};

constexpr int usualWidth = 520; // pixels; all choices stand in one row there

QPushButton *button(const QString &name, const QString &caption, QWidget *parent)
{
    auto *made = new QPushButton(caption, parent);
    made->setObjectName(name);
    return made;
}

} // namespace

hotkey::hotkey(sethotkey &module, SettingsFile &settings, QWidget *owner)
    : BorderlessWindow(owner, Qt::Dialog)
    , m_module(module)
    , m_settings(settings)
    , cboLetter(new LetterBox(this))
    , hotok(button(u"hotok"_s, tr("Use this hotkey"), this))
    , cmdMain{button(u"cmdMain0"_s, u"OK"_s, this), button(u"cmdMain1"_s, tr("Remove and close"), this)}
    , Command1(button(u"Command1"_s, tr("Turn on"), this))
    , Command2(button(u"Command2"_s, tr("Turn off"), this))
    , Label2(new QLabel(this))
{
    setObjectName(u"hotkey"_s);
    setWindowTitle(tr("Hotkey"));
    for (size_t i = 0; i < optKey.size(); ++i) {
        optKey[i] = new QRadioButton(QString(sethotkey::modifiers[i].name), this);
        optKey[i]->setObjectName(u"optKey%1"_s.arg(i));
        connect(optKey[i], &QRadioButton::clicked, this, [this, i] { choose(static_cast<int>(i)); });
    }
    cboLetter->setObjectName(u"cboLetter"_s);
    cboLetter->setAccessibleName(tr("Letter of the hotkey"));
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        cboLetter->addItem(QString(QLatin1Char(letter)));
    cboLetter->setCurrentIndex(-1);
    Label2->setObjectName(u"Label2"_s);
    connect(hotok, &QPushButton::clicked, this, &hotkey::confirm);
    connect(cmdMain[0], &QPushButton::clicked, this, &hotkey::toggle);
    connect(cmdMain[1], &QPushButton::clicked, this, [this] {
        m_isUnloading = true;
        close();
    });
    connect(Command1, &QPushButton::clicked, this,
        [this] { m_module.RegisterLauncherHotkey(cboLetter->currentText()); });
    connect(Command2, &QPushButton::clicked, this, [this] { m_module.UnregisterLauncherHotkey(); });
    connect(&m_module, &sethotkey::registrationChanged, this, &hotkey::showState);
    connect(cboLetter, &QComboBox::currentIndexChanged, this, &hotkey::showWhetherComplete);
    (new moveit(*this))->installOn(*this);

    layOut();
    SetNew(ShowOnly);
    showState();
    showWhetherComplete();
}

void hotkey::layOut()
{
    QWidget *content = (new FittingArea(this))->content();
    auto *Label1 = new QLabel(tr("Shows or hides the launcher from anywhere"), content);
    Label1->setObjectName(u"Label1"_s);
    Label1->setProperty("heading", true);
    auto *Image1 = new PictureButton(u"Image1"_s, PictureButton::Picture::Back, tr("Back"), content);
    connect(Image1, &PictureButton::clicked, this, &QWidget::hide);
    hotok->setProperty("primary", true);
    hotok->setDefault(true);
    Label2->setProperty("quiet", true);
    Label2->setWordWrap(true);

    auto *grid = new QGridLayout(content);
    grid->setContentsMargins(18, 12, 12, 16);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(12);
    grid->addWidget(Label1, 0, 0, 1, 4);
    grid->addWidget(Image1, 0, 4, Qt::AlignRight);
    for (int i = 0; i < 3; ++i)
        grid->addWidget(optKey[static_cast<size_t>(i)], 1, i);
    grid->addWidget(cboLetter, 1, 3);
    if (isNarrow(usualWidth)) {
        grid->addWidget(Label2, 2, 0, 1, 3);
        grid->addWidget(hotok, 2, 3, 1, 2);
    } else {
        grid->addWidget(hotok, 1, 4);
        grid->addWidget(Label2, 2, 0, 1, 5);
    }
    const std::array<std::pair<QPushButton *, QString>, 4> explained{
        std::pair(Command1, tr("Takes the key for Plum.")),
        std::pair(Command2, tr("Gives the key back until the next start, and keeps the choice.")),
        std::pair(
            cmdMain[0], tr("OK turns the hotkey on and locks the choice; NO turns it off and unlocks it.")),
        std::pair(cmdMain[1], tr("Gives the key back until the next start.")),
    };
    for (int row = 3; const auto &[button, words] : explained) {
        auto *caption = new QLabel(words, content);
        caption->setProperty("quiet", true);
        caption->setWordWrap(true);
        button->setAccessibleDescription(words);
        grid->addWidget(button, row, 0, 1, 2);
        grid->addWidget(caption, row, 2, 1, 3);
        ++row;
    }
}

void hotkey::choose(int index)
{
    const sethotkey::Modifier &chosen = sethotkey::modifiers[static_cast<size_t>(index)];
    m_module.modifierFlags = chosen.flag;
    m_modifierName = chosen.name;
    showWhetherComplete();
}

// A letter alone would be taken away from every program.
void hotkey::showWhetherComplete()
{
    const bool isComplete = !m_modifierName.isEmpty() && cboLetter->currentIndex() >= 0;
    hotok->setEnabled(isComplete);
    hotok->setToolTip(isComplete ? QString() : tr("Choose a modifier and a letter first"));
}

void hotkey::SetNew(RegisterFlag flag)
{
    if (flag == Register)
        m_module.UnregisterLauncherHotkey();
    const QString name = Piece(m_module.hotkeyText, u"+"_s, 0);
    const QString letter = Piece(m_module.hotkeyText, u"+"_s, 1);
    // A name that is none of the three keeps the flags of the last choice; kept.
    for (size_t i = 0; i < sethotkey::modifiers.size(); ++i) {
        if (name == sethotkey::modifiers[i].name) {
            optKey[i]->setChecked(true);
            choose(static_cast<int>(i));
        }
    }
    cboLetter->setCurrentIndex(cboLetter->findText(letter, Qt::MatchExactly | Qt::MatchCaseSensitive));
    if (flag == Register)
        m_module.RegisterLauncherHotkey(cboLetter->currentText());
}

void hotkey::confirm()
{
    m_module.hotkeyText = m_modifierName + u'+' + cboLetter->currentText();
    SetNew(Register);
    // A combination that another program holds is said in words, so the window has to stay for them.
    const bool isTaken = m_module.isTaken();
    if (!isTaken)
        hide();
    m_settings.WriteSetting(u"hotkey"_s, u"hotkey"_s, m_module.hotkeyText);
    if (!isTaken)
        Q_EMIT confirmed();
}

void hotkey::toggle()
{
    if (cmdMain[0]->text() != "OK"_L1) {
        EnableChoice(true);
        m_module.UnregisterLauncherHotkey();
        cmdMain[0]->setText(u"OK"_s);
    } else {
        EnableChoice(false);
        m_module.RegisterLauncherHotkey(cboLetter->currentText());
        cmdMain[0]->setText(u"NO"_s);
    }
}

void hotkey::EnableChoice(bool flag)
{
    for (QRadioButton *option : optKey)
        option->setEnabled(flag);
    cmdMain[1]->setEnabled(flag);
    cboLetter->setEnabled(flag);
}

void hotkey::showState()
{
    if (m_module.isTaken())
        Label2->setText(tr("Another program uses this combination. Choose another one."));
    else if (m_module.isRegistered())
        Label2->setText(tr("%1 shows and hides Plum.").arg(m_module.keys()));
    else
        Label2->setText(tr("No hotkey is on. Choose a modifier and a letter."));
}

// A shortcut would take the key from the open list of letters too.
void hotkey::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        BorderlessWindow::keyPressEvent(event);
}

void hotkey::closeEvent(QCloseEvent *event)
{
    // The window manager's own way to close a window gives nothing up; the button that says so does.
    if (!m_isUnloading) {
        event->ignore();
        hide();
        return;
    }
    m_module.UnregisterLauncherHotkey();
    BorderlessWindow::closeEvent(event);
    Q_EMIT unloaded();
}

} // namespace plum
