#pragma once

#include "check/findings/finding.h"
#include "check/findings/name_use.h"
#include "engine/script_vocabulary.h"

#include <QByteArrayView>

namespace plum {

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

private:
    ScriptVocabulary m_vocabulary;
};

} // namespace plum
