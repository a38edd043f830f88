#include "ui/asking/questions.h"

#include "library/app_library.h"
#include "ui/asking/shurubox.h"

#include <utility>

namespace plum {

Questions::Questions(Shell &shell, const AppLibrary &library, Needs needs)
    : m_shell(shell)
    , m_library(library)
    , m(std::move(needs))
{
}

Questions::~Questions()
{
    delete m_box;
}

shurubox &Questions::freshBox()
{
    m_box = new shurubox(m_shell,
        {.exists = [this](const QString &keyword) { return m_library.exists(keyword); },
            .faultOf = [this](const QString &keyword) { return m_library.faultOf(keyword); }},
        m.owner());
    connect(m_box, &shurubox::unloaded, this, [this] {
        m_box.clear();
        // What the answer leads to comes first: a script may have its next question.
        QMetaObject::invokeMethod(this, &Questions::showWaiting, Qt::QueuedConnection);
    });
    connect(m_box, &shurubox::inputConfirmed, this, &Questions::inputConfirmed);
    connect(m_box, &shurubox::inputClosed, this, &Questions::inputClosed);
    connect(m_box, &shurubox::nameConfirmed, this,
        [this](const QString &name) { Q_EMIT nameConfirmed(name, true); });
    connect(m_box, &shurubox::nameConfirmedUnchecked, this,
        [this](const QString &name) { Q_EMIT nameConfirmed(name, false); });
    return *m_box;
}

void Questions::ask(Kind kind, const Show &show)
{
    if (!m_box || m_openKind == kind)
        open(kind, show);
    else if (kind == Kind::OfScript)
        m_waitingOfScript = show;
    else
        m_waitingName = show;
}

void Questions::open(Kind kind, const Show &show)
{
    if (m_box) {
        // What takes its place decides what happens next.
        disconnect(m_box, &shurubox::dismissed, this, nullptr);
        m_box->close();
    }
    m_openKind = kind;
    shurubox &box = freshBox();
    if (kind == Kind::OfScript)
        connect(&box, &shurubox::dismissed, this, &Questions::dismissed);
    show(box);
}

void Questions::showWaiting()
{
    if (m_box)
        return;
    if (m_waitingOfScript) {
        open(Kind::OfScript, *std::exchange(m_waitingOfScript, std::nullopt));
    } else if (m_waitingName) {
        open(Kind::Name, *std::exchange(m_waitingName, std::nullopt));
    }
}

void Questions::showInput(const QString &prompt, const QString &variable)
{
    ask(Kind::OfScript, [prompt, variable](shurubox &box) { box.showInput(prompt, variable); });
}

void Questions::showTip(const QString &text)
{
    ask(Kind::OfScript, [this, text](shurubox &box) {
        box.showTip(text);
        // Where the run goes on is known when the line has been carried out.
        const auto explain = [this, asked = &box] {
            if (m_box == asked)
                m_box->explainKeys(m.keysOfTip());
        };
        QMetaObject::invokeMethod(this, explain, Qt::QueuedConnection);
    });
}

void Questions::askPackageName(const QString &keyword, const QString &package)
{
    ask(Kind::Name, [keyword, package](shurubox &box) { box.showName(keyword, package); });
}

bool Questions::isAskingName() const
{
    return (m_box && m_openKind == Kind::Name) || m_waitingName;
}

bool Questions::isAsking() const
{
    return !m_box.isNull();
}

void Questions::bringForward()
{
    if (!m_box)
        return;
    m_box->raise();
    m_box->activateWindow();
}

void Questions::dropOfScript()
{
    m_waitingOfScript.reset();
    if (!m_box || m_openKind != Kind::OfScript)
        return;
    disconnect(m_box, &shurubox::dismissed, this, nullptr);
    m_box->close();
}

bool Questions::isAskingOfScript() const
{
    return (m_box && m_openKind == Kind::OfScript) || m_waitingOfScript;
}

QString Questions::entryText() const
{
    return m_box ? m_box->entryText() : QString();
}

} // namespace plum
