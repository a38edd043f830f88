#include "ui/editing/script_advisor.h"

#include <QThreadPool>

#include <algorithm>
#include <chrono>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto typingPause = 200ms;

// The editor counts every line end as one character.
class EditorPositions
{
public:
    explicit EditorPositions(const QString &text)
    {
        for (qsizetype at = text.indexOf("\r\n"_L1); at >= 0; at = text.indexOf("\r\n"_L1, at + 2))
            m_pairs += at;
    }

    int of(qsizetype offset) const
    {
        const auto before = std::ranges::lower_bound(m_pairs, offset) - m_pairs.begin();
        return static_cast<int>(offset - before);
    }

private:
    QList<qsizetype> m_pairs; // where each CR LF begins
};

ShownFindings findingsOf(const OpenScript &script)
{
    const EditorPositions positions(script.text());
    ShownFindings found;
    for (const Finding &finding : script.findings()) {
        const OpenScript::EditorRange range = script.rangeOf(finding);
        const int from = positions.of(script.offsetOf(range.from));
        found += {from, positions.of(script.offsetOf(range.to)) - from, finding.severity,
            u"%1 [%2]"_s.arg(finding.message, finding.rule)};
    }
    return found;
}

// One thread for all editors, as long as the process lasts: when a thread ends, MinGW's run time frees its
// variables before it destroys them, those of Qt's regular expressions among them.
QThreadPool &checkersThread()
{
    static QThreadPool *const thread = [] {
        auto *const made = new QThreadPool;
        made->setMaxThreadCount(1);
        made->setExpiryTimeout(-1);
        return made;
    }();
    return *thread;
}

} // namespace

ScriptAdvisor::ScriptAdvisor(
    const ScriptVocabulary &vocabulary, std::function<QString()> shown, QObject *parent)
    : QObject(parent)
    , m_check(vocabulary)
    , m_shown(std::move(shown))
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &ScriptAdvisor::look);
}

// The thread uses what belongs to this object.
ScriptAdvisor::~ScriptAdvisor()
{
    m_idle->acquire();
}

void ScriptAdvisor::setTarget(Target target)
{
    m_target = std::move(target);
    ++m_text;
    m_pause.start(0);
}

void ScriptAdvisor::noteChange()
{
    ++m_text;
    m_pause.start(typingPause);
}

void ScriptAdvisor::look()
{
    if (m_isLooking)
        return; // take() looks again
    m_isLooking = true;
    m_idle->acquire();
    checkersThread().start([this, idle = m_idle, target = m_target, shown = m_shown(), text = m_text] {
        if (m_script.folder() != target.folder)
            m_script = OpenScript(target.folder, {});
        m_script.replaceAll(target.file.textWith(shown, target.lineEnds));
        m_script.examine(m_check);
        const ShownFindings findings = findingsOf(m_script);
        QMetaObject::invokeMethod(
            this, [this, text, findings] { take(text, findings); }, Qt::QueuedConnection);
        idle->release();
    });
}

void ScriptAdvisor::take(int text, const ShownFindings &findings)
{
    m_isLooking = false;
    if (text == m_text)
        Q_EMIT found(findings);
    else if (!m_pause.isActive())
        look();
}

} // namespace plum
