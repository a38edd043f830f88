#include "ui/controls/footer.h"

#include "ui/controls/rich_link.h"

#include <QKeyEvent>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds timeToCome{30}; // the user may be somewhere else
constexpr qsizetype mostShown = 40; // characters of what was typed

} // namespace

Footer::Footer(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(u"hint"_s);
    setProperty("quiet", true);
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    // A long word must not make the window wider.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_passes.setSingleShot(true);
    connect(&m_passes, &QTimer::timeout, this, &Footer::refresh);
    connect(this, &QLabel::linkActivated, this, &Footer::follow);
    hide();
}

void Footer::setStanding(const QString &richText)
{
    m_standing = richText;
    refresh();
}

void Footer::say(const QString &plainText, std::chrono::milliseconds howLong)
{
    m_passing = plainText.toHtmlEscaped();
    m_passes.start(howLong);
    refresh();
}

void Footer::sayFailed(const QString &plainText)
{
    say(plainText, timeToCome);
    m_passing += richLink(u"happened"_s, tr("What happened?"));
    refresh();
}

void Footer::sayStopped(const QString &plainText, bool hasLine)
{
    say(plainText, timeToCome);
    if (hasLine)
        m_passing += richLink(u"line"_s, tr("Show the line"));
    refresh();
}

void Footer::setRunning(const QString &plainText)
{
    m_running = plainText.toHtmlEscaped();
    refresh();
}

void Footer::setWaitsForHand(bool waits)
{
    m_waitsForHand = waits;
}

void Footer::setUpdates(int apps)
{
    m_updates = apps;
    refresh();
}

void Footer::setDownload(const QString &plainText)
{
    m_download = plainText.toHtmlEscaped();
    refresh();
}

void Footer::setHindrance(Hindrance hindrance, const QString &keyword)
{
    const QString shown
        = (keyword.size() > mostShown ? keyword.first(mostShown) + u'…' : keyword).toHtmlEscaped();
    // A text that is set again forgets the link that Tab has gone to.
    if (m_hindrance == hindrance && m_keyword == shown)
        return;
    m_hindrance = hindrance;
    m_keyword = shown;
    refresh();
}

// To what is typed.
QString Footer::answer() const
{
    switch (m_hindrance) {
    case Hindrance::None:
        break;
    case Hindrance::NoApp:
        return tr("No app has this keyword.") + richLink(u"new"_s, tr("Create it? (Ctrl+N)"));
    case Hindrance::NoKeyword:
        return tr("Enter runs nothing: the keyword comes before the first blank.");
    case Hindrance::NotLookedFor:
        return tr("Enter runs nothing yet.") + richLink(u"look"_s, tr("Look for \"%1\"").arg(m_keyword));
    case Hindrance::Selected:
        return tr("Enter in the keyword box runs nothing while \"%1\" is selected.").arg(m_keyword)
            + richLink(u"deselect"_s, tr("Deselect it"));
    }
    return {};
}

void Footer::refresh()
{
    QString line = m_standing;
    if (m_updates > 0 && !line.isEmpty())
        line += u" ·"_s;
    if (m_updates > 0)
        line += richLink(u"updates"_s, m_updates == 1 ? tr("1 update") : tr("%1 updates").arg(m_updates));
    if (!m_running.isEmpty())
        line = m_running + (m_waitsForHand ? richLink(u"on"_s, tr("Go on (Enter)")) : QString())
            + richLink(u"stop"_s, tr("Stop"));
    else if (!m_download.isEmpty())
        line = m_download;
    else if (m_passes.isActive())
        line = m_passing;
    else if (m_hindrance != Hindrance::None)
        line = answer();
    setText(line);
    setVisible(!line.isEmpty());
}

// A label keeps the Tab key for each of its links; a single one needs no stop of its own.
bool Footer::focusNextPrevChild(bool next)
{
    const bool hasSeveral = text().count(u"<a href"_s) > 1;
    return hasSeveral ? QLabel::focusNextPrevChild(next) : QWidget::focusNextPrevChild(next);
}

void Footer::keyPressEvent(QKeyEvent *event)
{
    const bool isPress
        = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    // The link that Tab has gone to is selected, and the label follows it.
    if (const QString link = targetOf(text()); isPress && !link.isEmpty() && !hasSelectedText())
        follow(link);
    else
        QLabel::keyPressEvent(event);
}

void Footer::follow(const QString &link)
{
    if (link == "new"_L1)
        Q_EMIT createRequested();
    else if (link == "look"_L1)
        Q_EMIT lookRequested();
    else if (link == "deselect"_L1)
        Q_EMIT deselectRequested();
    else if (link == "on"_L1)
        Q_EMIT goOnRequested();
    else if (link == "stop"_L1)
        Q_EMIT stopRequested();
    else if (link == "line"_L1)
        Q_EMIT stoppedLineRequested();
    else if (link == "happened"_L1)
        Q_EMIT whatHappenedRequested();
    else if (link == "updates"_L1)
        Q_EMIT updatesRequested();
    else
        Q_EMIT hotkeyRequested();
}

} // namespace plum
