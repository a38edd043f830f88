#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

namespace plum {

// Leaves a run that the user has stopped, through whatever it is inside of. It is no error: nothing that
// suppresses or catches errors of scripts knows it. Caught where the run was started.
class RunStopped
{
public:
    struct Place
    {
        QString keyword = {}; // of the app; empty for a script on the command line
        int line = 0; // counted from 0
        QString file = {}; // a part's; empty for the script itself
    };

    // Where the innermost of the runs that are left was; it fills this in itself.
    const std::optional<Place> &place() const { return m_place; }
    void setPlace(const Place &place)
    {
        if (!m_place)
            m_place = place;
    }

private:
    std::optional<Place> m_place;
};

// Which keys scripts have pressed lately, so that a combination of theirs is not taken for the user's.
class OwnKeys
{
public:
    // Before the event is sent.
    void note(quint8 virtualKey);

    // Whether that key was pressed by a script within the last two seconds. In any thread.
    bool isRecent(quint8 virtualKey) const;

private:
    std::array<std::atomic<qint64>, 256> m_at{}; // milliseconds of a steady clock; 0: never
};

// Says that the user wants the runs to end. Everything of a run that lasts looks at it, or listens to it
// where it waits in an event loop; one signal serves all runs of the process, also those inside the waits of
// others.
class StopSignal final : public QObject
{
    Q_OBJECT

public:
    // In any thread.
    void raise();

    // The runs that it was for are over.
    void lower() { m_isRaised = false; }

    // In any thread; as cheap as reading a variable.
    bool isRaised() const { return m_isRaised.load(std::memory_order_relaxed); }

    // When it was raised last: from then on `isRaised` said so. In any thread.
    std::optional<std::chrono::steady_clock::time_point> raisedAt() const;

    // Where a run can be left.
    void check() const
    {
        if (isRaised())
            throw RunStopped();
    }

    OwnKeys &ownKeys() { return m_ownKeys; }

Q_SIGNALS:
    // In the thread of this object, from its event loop, and only while it is still so.
    void raised();

private:
    std::atomic<bool> m_isRaised = false;
    mutable std::mutex m_lock; // of the time
    std::optional<std::chrono::steady_clock::time_point> m_raisedAt;
    OwnKeys m_ownKeys;
};

} // namespace plum
