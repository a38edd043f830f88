#pragma once

#include "guard/granted_limit.h"
#include "guard/real_places.h"

#include <functional>

namespace plum {

class Launcher;
class Platform;

// Holds the lines that are being carried out to the sheet that their app was granted. The guarded ports ask
// it before every call; what it refuses it says once to whoever listens, and the run state has the reason.
//
// Without a limit everything is allowed.
class Guard
{
public:
    struct Needs
    {
        Platform &platform; // behind the guarded one
        RunState &state;
        const Launcher &launcher;
        std::function<void(const QString &sentence)> report;
    };

    explicit Guard(Needs needs);

    // What has no object, or whose object does not matter here.
    bool allows(Effect effect);

    // Keys and clicks: they go to the sheet's one window, if it has one.
    bool allowsInput(Effect effect);

    bool allowsFile(Effect effect, const QString &systemPath);

    // A new file in a folder; the user may have named the folder.
    bool allowsNewFile(const QString &folder, const QString &name);
    bool allowsAddress(const QString &address);
    bool allowsPage(const QString &html);

    // Opening or starting something, as scripts name it: a path with either separator, a name, an address.
    bool allowsRun(const QString &target);

    bool allowsTitle(const QString &title);
    bool allowsWindow(qint32 window);

    // Pasting puts a text on the clipboard and what was there back.
    bool allowsClipboardText();
    bool allowsSettingClipboard(const QString &text);
    bool allowsClearingClipboard();
    void noteClipboard(const QString &text) { m_clipboardBefore = text; }
    bool allowsKey(quint8 virtualKey);

    // One of the effects is on the sheet.
    bool allowsAnyOf(Effect first, Effect second);

private:
    const GrantedLimit *limit() const;
    const Scope *scopeOf(Effect effect) const;
    bool refuse(Effect effect, const QString &what = {});
    bool allowsPlace(Effect effect, const QString &systemPath, bool isGiven);
    QStringList given() const;
    bool isGiven(const QString &text) const;
    bool isGivenFile(const QString &systemPath) const;
    bool isGivenAddress(const QString &address) const;
    bool isInItsWindow(Effect effect);
    bool mayOpen(const Scope &scope, const QString &target);

    Needs m;
    RealPlaces m_places;
    QString m_clipboardBefore;
    QString m_lastReport;
    std::shared_ptr<const RunLimit> m_reportedFor;
};

} // namespace plum
