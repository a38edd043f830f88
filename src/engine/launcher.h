#pragma once

#include <QString>

namespace plum {

enum class MessageIcon {
    None,
    Critical,
};

struct Message
{
    QString text = {};
    QString title = {}; // empty: the program's own name
    MessageIcon icon = MessageIcon::None;
    bool systemModal = false; // stands above every other window until it is answered
    QString meaning = {}; // what a text that is fixed says, in the session's language; empty where it is that
};

// What scripts want of the program around them.
class Launcher
{
public:
    virtual ~Launcher() = default;

    // The text of the launcher's keyword box: the keyword and whatever was typed after it.
    virtual QString keywordBoxText() const = 0;

    // The text of the input box's entry; an input box that is not open counts as a fresh, empty one.
    virtual QString inputEntryText() const = 0;

    // Shows the input box with its entry in front. It does not wait: the box resumes the run itself.
    // `variable` is where the entry's text goes.
    virtual void showInput(const QString &prompt, const QString &variable) = 0;

    // Shows the tip window on top of all windows. It does not wait either.
    virtual void showTip(const QString &text) = 0;

    // Shows a message and waits until the user has closed it.
    virtual void showMessage(const Message &message) = 0;

    virtual void hideLauncher() = 0;

    // Ends the process at once and in order. The real program does not come back from here; a caller that
    // gets control again (in a test) leaves the run loop without another step.
    virtual void endProcess() = 0;
};

} // namespace plum
