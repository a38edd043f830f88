#pragma once

#include "engine/run_state.h"
#include "engine/script_vocabulary.h"
#include "library/grant_file.h"
#include "library/install_offer.h"
#include "sheet/compute_sheet.h"

#include <functional>
#include <memory>
#include <optional>

namespace plum {

class TextCodec;

// Which apps are limited to what: from the installation, where the user agrees to a sheet, to the run, which
// is held to it.
class AppGrants
{
public:
    struct Needs
    {
        const Paths &paths;
        TextCodec &codec;
        std::function<ScriptVocabulary()> vocabulary;
    };

    explicit AppGrants(Needs needs);

    // What the app may do under the script that was read of it; null for the user's own apps. A script that
    // nobody has granted anything may do nothing.
    std::shared_ptr<const RunLimit> limitOf(const QString &keyword, const QByteArray &script);

    // What has to be asked before the app runs; nothing when it may. `allow` is the answer yes.
    struct Question
    {
        InstallOffer offer;
        Grant grant; // if the user agrees
    };
    std::optional<Question> questionBefore(const QString &keyword);
    void allow(const QString &keyword, const Grant &grant) { m_file.set(keyword, grant); }

    // The user has agreed to a sheet that was shown before the package was there.
    void promise(const QString &keyword, const QByteArray &sheet);

    // A package is about to become the app, from a folder of the system. It gets what its script says, but
    // for what goes beyond a promise: then it does not run before that is confirmed. False when this cannot
    // be kept.
    bool arrive(const QString &keyword, const QString &systemFolder);

    // What a package's app may do, as JSON; empty when the package cannot be read.
    QByteArray sheetOfPackage(const QString &path);

    // What was granted, as JSON; empty for the user's own apps and for what was taken back.
    QByteArray granted(const QString &keyword) const;

    // For "What may it do?".
    struct Told
    {
        QStringList sentences;
        bool isLimited = false; // it is no app of the user's own
        bool isTakenBack = false;
    };
    Told told(const QString &keyword);
    void takeBack(const QString &keyword);

private:
    const ScriptVocabulary &vocabulary();
    QString decoded(const QByteArray &bytes) const;
    std::optional<ComputedSheet> computed(const QString &keyword);

    Needs m;
    AppFolders m_folders;
    GrantFile m_file;
    ScriptVocabulary m_vocabulary; // made when it is first needed
    QHash<QString, QByteArray> m_promises;
};

} // namespace plum
