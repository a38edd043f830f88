#include "store/clipboard_channel.h"

#include "platform/clipboard.h"

#include <QTimer>

namespace plum {

namespace {

constexpr QLatin1StringView moreWillFollow("##tarnwick:sending##");
constexpr QLatin1StringView lastPage("##tarnwick:send##");
constexpr std::chrono::milliseconds period(500);
constexpr qsizetype largestMessage = (qsizetype(16) << 20) / qsizetype(sizeof(QChar)); // characters

} // namespace

ClipboardChannel::ClipboardChannel(Clipboard &clipboard)
    : m_clipboard(clipboard)
{
    connect(&clipboard, &Clipboard::changed, this, &ClipboardChannel::checkresout);
    // What was there before says of itself that it has changed to nobody.
    QTimer::singleShot(period, this, &ClipboardChannel::checkresout);
}

void ClipboardChannel::setEnabled(bool enabled)
{
    const bool wasOff = !m_enabled;
    m_enabled = enabled;
    if (wasOff && enabled)
        checkresout();
}

void ClipboardChannel::checkresout()
{
    if (!m_enabled)
        return;
    // Taking a page away is news too, also where another program's later change makes it come to nothing.
    if (m_isTaking) {
        m_hasNews = true;
        return;
    }
    const QString text = m_clipboard.text();
    const bool isLast = text.startsWith(lastPage);
    if (!isLast && !text.startsWith(moreWillFollow))
        return;

    m_isTaking = true;
    m_hasNews = false;
    if (text.size() <= largestMessage)
        Q_EMIT pageArrived(text.sliced(isLast ? lastPage.size() : moreWillFollow.size()));
    m_clipboard.clear();
    m_isTaking = false;
    if (isLast)
        setEnabled(false);
    else if (m_hasNews && m_clipboard.text() != text)
        checkresout();
}

} // namespace plum
