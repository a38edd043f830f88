#pragma once

#include "platform/pointer.h"

#include <QRect>

#include <utility>

namespace plum {

class DesktopExtension;
class RemoteSession;

// The pointer, moved within the stream of the whole desktop. Where it is Plum's extension tells; without it,
// it is where it was moved to.
class MutterPointer final : public Pointer
{
public:
    MutterPointer(RemoteSession &session, DesktopExtension &extension)
        : m_session(session)
        , m_extension(extension)
    {
    }

    QPoint position() override;
    void moveTo(QPoint point) override;
    void buttonEvent(quint32 flags) override;
    void releaseAll() override;

private:
    void sendButton(int button, bool &isDown, bool down);

    RemoteSession &m_session;
    DesktopExtension &m_extension;
    QPoint m_last;
    std::pair<QPoint, QPoint> m_drag; // from and to of the last move with a button down; equal without one
    bool m_leftIsDown = false;
    bool m_rightIsDown = false;
};

} // namespace plum
