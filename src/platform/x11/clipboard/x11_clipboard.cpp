#include "platform/x11/clipboard/x11_clipboard.h"

#include "platform/linux/clipboard_keeper.h"
#include "platform/x11/connection/x11_connection.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QMimeData>
#include <QThread>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int readTime = 1000; // milliseconds
constexpr int newsTime = 1000; // milliseconds; on a loaded machine Qt hears late
constexpr int changeAttempts = 3;

// Null without a graphical application.
QClipboard *qtClipboard()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                         : nullptr;
}

// Qt's connection to the X server; null on any other platform.
xcb_connection_t *qtConnection()
{
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *x11
        = application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

// A text that counts how often it is asked for.
class CountedText final : public QMimeData
{
public:
    CountedText(const QString &text, std::shared_ptr<quint64> timesTaken)
        : m_timesTaken(std::move(timesTaken))
    {
        setText(text);
    }

protected:
    QVariant retrieveData(const QString &format, QMetaType type) const override
    {
        ++*m_timesTaken;
        return QMimeData::retrieveData(format, type);
    }

private:
    const std::shared_ptr<quint64> m_timesTaken;
};

} // namespace

X11Clipboard::X11Clipboard(X11Connection &connection)
    : m_connection(connection)
    , m_reader(connection)
{
}

// Asked on this program's own connection: Qt would keep believing in a change that the server refused.
X11Clipboard::Owner X11Clipboard::owner()
{
    const auto found = m_connection.reply(
        xcb_get_selection_owner_reply, xcb_get_selection_owner, m_connection.atom("CLIPBOARD"));
    if (!found || found->owner == XCB_NONE)
        return Owner::Nobody;
    xcb_connection_t *qt = qtConnection();
    if (!qt)
        return Owner::Another;
    // The upper bits of a window's number name the connection that made it.
    const xcb_setup_t *setup = xcb_get_setup(qt);
    const bool ours = (found->owner & ~setup->resource_id_mask) == setup->resource_id_base;
    return ours ? Owner::ThisProgram : Owner::Another;
}

// Nobody takes it when this object looks at it.
QString X11Clipboard::ownText()
{
    const quint64 before = *m_timesTaken;
    QString text = qtClipboard()->text();
    *m_timesTaken = before;
    return text;
}

QString X11Clipboard::text()
{
    if (qtClipboard() && !qtConnection())
        return ownText();
    switch (owner()) {
    case Owner::ThisProgram:
        return ownText();
    case Owner::Another:
        return m_reader.text(readTime);
    case Owner::Nobody:
        break;
    }
    return {};
}

// Qt dates a change by the last event that it has handled, and the server refuses one that is older than the
// present owner's. Qt then gets the time to handle the news of that owner, and nothing else, and tries again.
void X11Clipboard::change(Owner after, const std::function<void(QClipboard &)> &step)
{
    QClipboard *clipboard = qtClipboard();
    if (!clipboard)
        return;
    step(*clipboard);
    if (!qtConnection() || owner() == after)
        return;

    bool hasNews = false;
    const auto news = connect(clipboard, &QClipboard::dataChanged, this, [&] { hasNews = true; });
    const QDeadlineTimer deadline(newsTime, Qt::PreciseTimer);
    for (int attempt = 1; owner() != after && attempt < changeAttempts; ++attempt) {
        for (hasNews = false; !hasNews && !deadline.hasExpired(); QThread::msleep(1)) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents
                | QEventLoop::ExcludeSocketNotifiers | QEventLoop::X11ExcludeTimers);
        }
        step(*clipboard);
    }
    disconnect(news);
}

void X11Clipboard::setText(const QString &text)
{
    change(Owner::ThisProgram,
        [&](QClipboard &clipboard) { clipboard.setMimeData(new CountedText(text, m_timesTaken)); });
}

void X11Clipboard::clear()
{
    change(Owner::Nobody, [](QClipboard &clipboard) { clipboard.clear(); });
}

void X11Clipboard::outliveProcess()
{
    QClipboard *clipboard = qtClipboard();
    // What Qt knows without asking the server comes first: most scripts have put nothing there.
    if (!qtConnection() || !clipboard->ownsClipboard() || owner() != Owner::ThisProgram)
        return;
    const QString text = clipboard->text();
    if (text.isEmpty())
        return;
    disconnect(m_changes);
    // The text is on the clipboard all the time: the keeper takes it from Qt. What Qt then does comes too
    // late for the server and only tells Qt itself, which at its end would ask the clipboard manager to save
    // the text, and wait long for one that hangs.
    if (!keepClipboardText(u"plum-clipboard"_s, text.toUtf8()))
        return;
    // Qt would say on standard error that the server refused.
    QLoggingCategory::setFilterRules(u"qt.qpa.clipboard.warning=false"_s);
    clipboard->clear();
}

void X11Clipboard::connectNotify(const QMetaMethod &signal)
{
    QClipboard *clipboard = qtClipboard();
    if (clipboard && !m_changes && signal.name() == "changed")
        m_changes = connect(clipboard, &QClipboard::dataChanged, this, &Clipboard::changed);
}

} // namespace plum
