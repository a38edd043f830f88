#pragma once

#include "check/open_script.h"
#include "library/script_file.h"
#include "ui/editing/shown_finding.h"

#include <QObject>
#include <QSemaphore>
#include <QTimer>

#include <functional>
#include <memory>

namespace plum {

// Lets the checker look at a script while somebody types it. It looks when the typing pauses, in another
// thread, so that no key waits for it; what it says of a text that has changed meanwhile is dropped.
class ScriptAdvisor final : public QObject
{
    Q_OBJECT

public:
    // `shown` is asked for the editor's text when it is time to look.
    ScriptAdvisor(const ScriptVocabulary &vocabulary, std::function<QString()> shown, QObject *parent);
    ~ScriptAdvisor() override;
    Q_DISABLE_COPY_MOVE(ScriptAdvisor)

    // What the text becomes when it is saved.
    struct Target
    {
        ScriptFile file; // as it was read
        ScriptFile::LineEnds lineEnds = ScriptFile::LineEnds::Kept;
        QString folder; // of the app, as the system writes it; empty while there is none
    };

    void setTarget(Target target);

    // The text has changed.
    void noteChange();

Q_SIGNALS:
    void found(const plum::ShownFindings &findings);

private:
    void look();
    void take(int text, const ShownFindings &findings);

    ScriptCheck m_check;
    std::function<QString()> m_shown;
    Target m_target;
    QTimer m_pause;
    int m_text = 0; // counts the texts; what is found in an earlier one is out of date
    bool m_isLooking = false;
    OpenScript m_script; // the thread's
    // Taken while the thread uses what belongs to this object; the thread lets go of it last.
    std::shared_ptr<QSemaphore> m_idle = std::make_shared<QSemaphore>(1);
};

} // namespace plum
