#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

namespace plum {

// What can stand at a place of a script, and what stands there, for editors. Both editions of the language.
class ScriptWords
{
public:
    explicit ScriptWords(ScriptVocabulary vocabulary)
        : m_vocabulary(std::move(vocabulary))
    {
    }

    enum class Kind {
        Namespace,
        Command,
        Choice,
        Key,
        Variable,
        Reference,
    };

    struct Suggestion
    {
        QString text; // that takes the place of the word in front of the caret
        Kind kind;
        QString sentence; // about it; may be empty
    };

    // What can go on behind `before`, the line up to the caret. `lines` is the whole script, for its
    // variables.
    QList<Suggestion> suggestions(const QStringList &lines, const QString &before, Edition edition) const;

    // The sentence and the fields of the command whose head is at `column` of a line (from 0); empty where
    // there is none.
    QString explanation(const QString &line, qsizetype column, Edition edition) const;

private:
    const CommandInfo *row(const QString &line, Edition edition) const;
    QList<Suggestion> heads(const QString &before, Edition edition) const;
    QList<Suggestion> values(
        const Field &field, bool isQuoted, const QStringList &variables, Edition edition) const;
    QStringList variables(const QStringList &lines, Edition edition) const;

    ScriptVocabulary m_vocabulary;
};

} // namespace plum
