#pragma once

#include <QObject>
#include <QString>

namespace plum {

class Clipboard;

// The clipboard message channel, under the name of the timer it replaces: a helper program leaves an HTML
// page with a marker in front on the clipboard, and the store window shows it. The clipboard says when it
// has changed, so nothing is polled and no other program's clipboard is read more often than it changes; a
// page from before this program started is taken half a second after the start.
class ClipboardChannel final : public QObject
{
    Q_OBJECT

public:
    explicit ClipboardChannel(Clipboard &clipboard);

    // While the channel is off, messages stay on the clipboard; one that is still there when the channel
    // is switched on arrives then. On at the beginning.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

Q_SIGNALS:
    // A page has arrived; the marker is gone. The clipboard is emptied after this. A message of more than 16
    // MiB is taken from the clipboard without a word.
    void pageArrived(const QString &html);

private:
    void checkresout();

    Clipboard &m_clipboard;
    bool m_enabled = true;
    bool m_isTaking = false; // a page
    bool m_hasNews = false; // since then
};

} // namespace plum
