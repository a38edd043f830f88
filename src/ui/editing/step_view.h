#pragma once

#include "ui/editing/held_line.h"

#include <QTimer>
#include <QWidget>

class QGridLayout;
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace plum {

// Below the editor, while a run is followed: where it is held, what the arguments of that line come to, the
// variables, which can be changed, and how it may go on.
class StepView final : public QWidget
{
    Q_OBJECT

public:
    explicit StepView(QWidget *parent);

    void begin();
    void showHeld(const HeldLine &held);

    // The run is not held. What is shown stays for a moment, since most lines do not last.
    void showGoing();

    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void wished(plum::FollowedRunWish wish);
    void variableChanged(const QString &name, const QString &value);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeButtons(bool inOneRow);
    void go();
    void setHeld(bool isHeld);
    void addValues(const QString &caption, const QList<HeldLine::Value> &values, bool canBeChanged);

    QLabel *m_words;
    QTreeWidget *m_values;
    QGridLayout *m_buttons;
    QList<QPushButton *> m_ways; // all of them, in their order
    int m_perRow = 0;
    QList<QPushButton *> m_ofHeldRuns;
    QPushButton *m_hold = nullptr;
    QTimer m_goes;
};

} // namespace plum
