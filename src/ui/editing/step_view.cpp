#include "ui/editing/step_view.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int valuesHeight = 130; // pixels, where there is room
constexpr int leastValuesHeight = 64;
constexpr int betweenButtons = 4;
constexpr qsizetype mostShown = 2000; // characters of a value
constexpr auto aMoment = 250ms;

struct Way
{
    const char *name;
    const char *caption;
    const char *keys;
    FollowedRunWish wish;
};

using Wish = FollowedRunWish;
constexpr std::array ways{
    Way{"goOn", QT_TRANSLATE_NOOP("plum::StepView", "Go on"), "F5", Wish::GoOn},
    Way{"stepOver", QT_TRANSLATE_NOOP("plum::StepView", "Next line"), "F10", Wish::StepOver},
    Way{"stepInto", QT_TRANSLATE_NOOP("plum::StepView", "Into the part"), "F11", Wish::StepInto},
    Way{"stepOut", QT_TRANSLATE_NOOP("plum::StepView", "Out of it"), "Shift+F11", Wish::StepOut},
    Way{"toCaret", QT_TRANSLATE_NOOP("plum::StepView", "To the caret"), "Ctrl+F10", Wish::RunToCaret},
    Way{"holdRun", QT_TRANSLATE_NOOP("plum::StepView", "Hold"), "F6", Wish::Hold},
    Way{"stopRun", QT_TRANSLATE_NOOP("plum::StepView", "Stop"), "Shift+F5", Wish::Stop},
};

} // namespace

StepView::StepView(QWidget *parent)
    : QWidget(parent)
    , m_words(new QLabel(this))
    , m_values(new QTreeWidget(this))
{
    setObjectName(u"stepView"_s);
    m_words->setObjectName(u"heldWords"_s);
    m_words->setTextFormat(Qt::PlainText);
    m_words->setWordWrap(true);
    m_values->setObjectName(u"heldValues"_s);
    m_values->setAccessibleName(tr("Values"));
    m_values->setColumnCount(2);
    m_values->setHeaderLabels({tr("Name"), tr("Value")});
    m_values->setMinimumHeight(leastValuesHeight);
    m_values->setMaximumHeight(valuesHeight);
    m_values->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_values->setTabKeyNavigation(false);

    m_buttons = new QGridLayout;
    m_buttons->setSpacing(betweenButtons);
    for (const Way &way : ways) {
        auto *button = new QPushButton(tr(way.caption), this);
        button->setObjectName(QLatin1StringView(way.name));
        button->setProperty("small", true);
        button->setToolTip(QLatin1StringView(way.keys));
        button->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it is
        connect(button, &QPushButton::clicked, this, [this, way] { Q_EMIT wished(way.wish); });
        m_ways += button;
        if (way.wish == Wish::Hold)
            m_hold = button;
        else if (way.wish != Wish::Stop)
            m_ofHeldRuns += button;
    }
    placeButtons(false);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(6);
    column->setSizeConstraint(QLayout::SetNoConstraint); // one row of buttons must not keep it from two
    column->addWidget(m_words);
    column->addWidget(m_values);
    column->addLayout(m_buttons);

    // Names stay as they are.
    connect(m_values, &QTreeWidget::itemActivated, m_values, [this](QTreeWidgetItem *item) {
        if (item->flags() & Qt::ItemIsEditable)
            m_values->editItem(item, 1);
    });
    connect(m_values, &QTreeWidget::itemChanged, this,
        [this](QTreeWidgetItem *item) { Q_EMIT variableChanged(item->text(0), item->text(1)); });
    m_goes.setSingleShot(true);
    m_goes.setInterval(aMoment);
    connect(&m_goes, &QTimer::timeout, this, &StepView::go);
}

// In two rows where one is not wide enough, as on a small screen.
void StepView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    int wide = -betweenButtons;
    for (const QPushButton *each : std::as_const(m_ways))
        wide += each->sizeHint().width() + betweenButtons;
    placeButtons(wide <= width());
}

// That of two rows, however many there are right now.
QSize StepView::minimumSizeHint() const
{
    const qsizetype perRow = (m_ways.size() + 1) / 2;
    int width = -betweenButtons;
    for (qsizetype i = 0; i < perRow; ++i) {
        const qsizetype below = std::min(i + perRow, m_ways.size() - 1);
        width += std::max(m_ways[i]->sizeHint().width(), m_ways[below]->sizeHint().width()) + betweenButtons;
    }
    return {width, QWidget::minimumSizeHint().height()};
}

void StepView::placeButtons(bool inOneRow)
{
    const auto count = static_cast<int>(m_ways.size());
    const int perRow = inOneRow ? count : (count + 1) / 2;
    if (perRow == m_perRow)
        return;
    m_perRow = perRow;
    for (int i = 0; i < count; ++i)
        m_buttons->addWidget(m_ways[i], i / perRow, i % perRow);
    for (int column = 0; column <= count; ++column)
        m_buttons->setColumnStretch(column, column == perRow ? 1 : 0);
}

void StepView::begin()
{
    m_goes.stop();
    go();
    show();
}

void StepView::go()
{
    setHeld(false);
    m_words->setText(tr("The run goes on."));
    m_values->clear();
}

void StepView::showHeld(const HeldLine &held)
{
    m_goes.stop();
    setHeld(true);
    m_words->setText(held.words);
    const QSignalBlocker quiet(m_values);
    const QTreeWidgetItem *current = m_values->currentItem();
    const QString marked = current ? current->text(0) : QString();
    m_values->clear();
    addValues(tr("This line"), held.arguments, false);
    addValues(tr("Variables"), held.variables, true);
    m_values->expandAll();
    m_values->resizeColumnToContents(0);
    for (QTreeWidgetItem *item : m_values->findItems(marked, Qt::MatchExactly | Qt::MatchRecursive))
        m_values->setCurrentItem(item);
}

void StepView::showGoing()
{
    m_goes.start();
}

void StepView::setHeld(bool isHeld)
{
    for (QPushButton *button : m_ofHeldRuns)
        button->setEnabled(isHeld);
    m_hold->setEnabled(!isHeld);
}

void StepView::addValues(const QString &caption, const QList<HeldLine::Value> &values, bool canBeChanged)
{
    if (values.isEmpty())
        return;
    auto *group = new QTreeWidgetItem(m_values, {caption});
    group->setFlags(Qt::ItemIsEnabled);
    for (const HeldLine::Value &each : values) {
        auto *item = new QTreeWidgetItem(group, {each.name, each.value.left(mostShown)});
        // What is not shown whole would be cut off by a change.
        if (canBeChanged && each.value.size() <= mostShown)
            item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
}

} // namespace plum
