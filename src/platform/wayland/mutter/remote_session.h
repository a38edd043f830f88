#pragma once

#include "platform/wayland/mutter/gnome_bus.h"

#include <QPoint>
#include <QRect>
#include <QSemaphore>
#include <QThread>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace plum {

// Hears, in a thread of its own, under which number PipeWire has a stream: whoever waits for it does not let
// the user interface run meanwhile.
class StreamNumber final : public QObject
{
    Q_OBJECT

public:
    StreamNumber();
    ~StreamNumber() override;

    // Nothing when it does not come within `milliseconds`. Asked for once.
    std::optional<quint32> wait(int milliseconds);

public Q_SLOTS:
    void arrived(uint number);

private:
    QThread m_thread;
    QSemaphore m_hasArrived;
    quint32 m_number = 0;
};

// What the compositor lets a program do that shares the screen from afar: keys, the pointer, and a stream of
// the desktop's picture. It is begun with its first use, and begun anew once the compositor or the user has
// ended it. Without GNOME every call fails.
class RemoteSession
{
public:
    explicit RemoteSession(GnomeBus &bus)
        : m_bus(bus)
    {
    }
    ~RemoteSession() { end(); }
    Q_DISABLE_COPY_MOVE(RemoteSession)

    bool key(quint32 symbol, bool down);
    bool button(int button, bool down);
    bool moveTo(QPoint point); // within area()

    // The desktop that the stream shows and in which the pointer moves; empty without a session.
    QRect area();

    // PipeWire's number of the stream. Nothing without a session.
    std::optional<quint32> stream();

    // Grows with every session, so that a user of the stream knows that it is another one.
    int generation() const { return m_generation; }

    // Whether something was sent that may not have reached its window yet; false from then on.
    bool takeUnsettled() { return std::exchange(m_isUnsettled, false); }

private:
    bool begin();
    void end();
    bool notify(const QString &method, const std::function<QVariantList()> &arguments);

    GnomeBus &m_bus;
    BusObject m_remote; // no path without a session
    QString m_streamPath;
    QRect m_area;
    std::unique_ptr<StreamNumber> m_number;
    std::optional<quint32> m_stream;
    int m_generation = 0;
    bool m_isUnsettled = false;
};

} // namespace plum
