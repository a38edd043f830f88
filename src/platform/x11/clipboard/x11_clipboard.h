#pragma once

#include "platform/clipboard.h"
#include "platform/x11/clipboard/selection_reader.h"

#include <xcb/xcb.h>

#include <functional>
#include <memory>

class QClipboard;

namespace plum {

class X11Connection;

// The clipboard of the X server. Qt owns what this program puts there, because it serves other programs from
// the event loop; what others own is read on this program's own connection, because Qt would wait many
// seconds for an owner that hangs. On Qt's offscreen platform there is Qt's clipboard alone.
class X11Clipboard final : public Clipboard
{
    Q_OBJECT

public:
    explicit X11Clipboard(X11Connection &connection);

    QString text() override;
    void setText(const QString &text) override;
    void clear() override;
    std::optional<quint64> timesTaken() const override { return *m_timesTaken; }
    void outliveProcess() override;

protected:
    // Qt's clipboard is watched from the moment somebody wants to know.
    void connectNotify(const QMetaMethod &signal) override;

private:
    enum class Owner {
        Nobody,
        ThisProgram,
        Another,
    };

    Owner owner();
    QString ownText();
    void change(Owner after, const std::function<void(QClipboard &)> &step);

    X11Connection &m_connection;
    SelectionReader m_reader;
    std::shared_ptr<quint64> m_timesTaken = std::make_shared<quint64>(0); // Qt keeps texts longer than this
    QMetaObject::Connection m_changes; // of Qt's clipboard
};

} // namespace plum
