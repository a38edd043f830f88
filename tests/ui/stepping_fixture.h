#pragma once

#include "ui/editor_fixture.h"

#include "ui/editing/script_editor.h"

#include <QLabel>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace plum {

// A script in the launcher's editor, and somebody who follows its run there.
class SteppingTest : public EditorTest
{
protected:
    using Step = std::function<void()>;

    // Runs the script with `start`, which comes back when the run is over or waits for an answer. Where it is
    // held the next one of `steps` is done; behind the last one nothing may hold it.
    void follow(const Step &start, std::vector<Step> steps)
    {
        m_steps = std::move(steps);
        m_done = 0;
        m_patience.setRemainingTime(60000);
        places.clear();
        m_moment.clear();
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &hand, [this] { act(); });
        hand.start(0);
        start();
    }

    // What is said of the line before which the run is held; empty while none is.
    QString held()
    {
        const QString said = editor().accessibleDescription().section(u'\n', 0, 0);
        return said.startsWith(QLatin1StringView("Held")) || said.startsWith(QLatin1StringView("Line"))
            ? said
            : QString();
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&editor(), Qt::Key(key), modifiers);
    }
    Step pressing(int key, Qt::KeyboardModifiers modifiers = {})
    {
        return [this, key, modifiers] { press(key, modifiers); };
    }
    std::vector<Step> times(int count, const Step &step)
    {
        return std::vector<Step>(std::size_t(count), step);
    }
    Step f5() { return pressing(Qt::Key_F5); }
    Step f10() { return pressing(Qt::Key_F10); }
    Step stopping() { return pressing(Qt::Key_F5, Qt::ShiftModifier); }

    Step clicking(const char *name)
    {
        return [this, name] {
            auto *button = find<QAbstractButton>(name);
            EXPECT_TRUE(button->isEnabled()) << name;
            EXPECT_FALSE(button->toolTip().isEmpty()) << name;
            button->click();
        };
    }

    void setCaret(int line)
    {
        editor().setTextCursor(QTextCursor(editor().document()->findBlockByNumber(line)));
    }
    void toggle(int line)
    {
        setCaret(line);
        press(Qt::Key_F9);
    }

    ScriptEditor &editor() { return *find<ScriptEditor>("Text4"); }
    QTreeWidget &values() { return *find<QTreeWidget>("heldValues"); }
    QTreeWidgetItem *value(const QString &name)
    {
        return values().findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    QString valueText(const QString &name)
    {
        return value(name) ? value(name)->text(1) : QStringLiteral("none");
    }

    QString note() { return find<QLabel>("findings")->text(); }
    QString hint() { return find<QLabel>("hint")->text(); }
    QStringList notes() { return platform.log.lines().filter(QStringLiteral("note ")); }

    QStringList places; // where the run was held, with what had been noted by then

private:
    void act()
    {
        const QString now = held();
        if (!now.isEmpty() && m_patience.hasExpired()) {
            ADD_FAILURE() << now.toStdString() << " and nothing happens";
            stop.raise();
        }
        const QString moment = now + QString::number(platform.log.lines().size());
        // Keys reach the window that is active.
        if (now.isEmpty() || moment == m_moment || !ui.window()->isActiveWindow())
            return;
        m_moment = moment;
        places += now;
        if (m_done < m_steps.size()) {
            m_steps[m_done++]();
            return;
        }
        ADD_FAILURE() << "held once more: " << now.toStdString();
        stop.raise();
    }

    std::vector<Step> m_steps;
    std::size_t m_done = 0;
    QDeadlineTimer m_patience; // a run that nobody lets go on would hold the test for ever
    QString m_moment; // at which something was done last
};

} // namespace plum
