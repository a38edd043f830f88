#pragma once

#include "check/findings/finding.h"
#include "check/findings/name_use.h"
#include "engine/script_vocabulary.h"

#include <QByteArrayView>

#include <memory>

namespace plum {

// What the checker knows of the lines of one script, for the next look at it.
class ScriptMemory
{
public:
    ScriptMemory();
    ~ScriptMemory();
    Q_DISABLE_COPY_MOVE(ScriptMemory)

private:
    friend class ScriptCheck;
    struct Known;

    std::unique_ptr<Known> m_known;
};

// Everything that can be known about a script before it runs, in both editions of the language, by the tables
// of the namespaces. It runs nothing and needs no display.
class ScriptCheck
{
public:
    explicit ScriptCheck(ScriptVocabulary vocabulary)
        : m_vocabulary(std::move(vocabulary))
    {
    }

    // The findings of a script by place. `folder` is where it lies, for the files that it names; empty when
    // that is not known.
    Findings check(QByteArrayView script, const QString &folder = {}) const;

    struct Examined
    {
        Findings findings; // as from check
        NameUses names;
    };

    Examined examine(QByteArrayView script, const QString &folder = {}) const;

    // The same for a script that is being edited: only lines whose outcome can differ are judged anew. The
    // result is that of a check without memory.
    Examined examine(QByteArrayView script, const QString &folder, ScriptMemory &memory) const;

private:
    ScriptVocabulary m_vocabulary;
};

} // namespace plum
