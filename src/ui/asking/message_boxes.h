#pragma once

#include "library/app_library.h"

#include <QCoreApplication>

#include <vector>

class QMessageBox;

namespace plum {

// Messages and questions as boxes in the program's own look, above every other window where they are
// system-modal.
class MessageBoxes final : public LibraryDialogs
{
    Q_DECLARE_TR_FUNCTIONS(plum::MessageBoxes)

public:
    void showMessage(const Message &message) override;
    bool askToDelete(const QString &question, const QString &title, const QString &keyword) override;

    // Whether an app is to run although the store has taken its version back.
    static bool askToRun(const QString &keyword, const QString &reason);

    // Closes the messages that are shown, as if they had been read.
    void dismissMessages();

    enum class ScriptAnswer {
        Run,
        Edit,
        Neither,
    };

    // What is to become of a script that was opened outside of the launcher.
    static ScriptAnswer askRunOrEdit(const QString &systemPath);

    enum class Unsaved {
        Save,
        Discard,
        GoOn,
    };

    // What an app may do. True when the user takes it back, which is only offered where that is possible.
    static bool tellSheet(const QString &heading, const QString &sentences, bool canBeTakenBack);

    // What is to become of a text that was typed and not saved.
    static Unsaved askUnsaved(const QString &question);

private:
    std::vector<QMessageBox *> m_messages; // one inside the wait of another comes behind it
};

} // namespace plum
