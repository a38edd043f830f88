#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace plum {

// The clipboard's text. Other kinds of content read as the empty text and are lost when text is set.
class Clipboard : public QObject
{
    Q_OBJECT

public:
    // The current text; empty when there is none or its owner does not answer within one second.
    virtual QString text() = 0;

    // Puts `text` on the clipboard, in place of everything that is there.
    virtual void setText(const QString &text) = 0;

    // Leaves the clipboard empty.
    virtual void clear() = 0;

    // Grows whenever another program, or a window of this one, takes the text that this process has put on
    // the clipboard. Nothing where the system hands it out and tells nobody.
    virtual std::optional<quint64> timesTaken() const = 0;

    // Called once when the process is about to end: what this process put on the clipboard stays there.
    virtual void outliveProcess() = 0;

Q_SIGNALS:
    // Any program, this one included, has changed the clipboard.
    void changed();
};

} // namespace plum
