#include "ui/editing/step_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <array>
#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int valuesHeight = 130; // pixels
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
    m_values->setFixedHeight(valuesHeight);
    m_values->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_values->setTabKeyNavigation(false);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(4);
    for (const Way &way : ways) {
        auto *button = new QPushButton(tr(way.caption), this);
        button->setObjectName(QLatin1StringView(way.name));
        button->setProperty("small", true);
        button->setToolTip(QLatin1StringView(way.keys));
        button->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it is
        connect(button, &QPushButton::clicked, this, [this, way] { Q_EMIT wished(way.wish); });
        buttons->addWidget(button);
        if (way.wish == Wish::Hold)
            m_hold = button;
        else if (way.wish != Wish::Stop)
            m_ofHeldRuns += button;
    }
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(6);
    column->addWidget(m_words);
    column->addWidget(m_values);
    column->addLayout(buttons);

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
