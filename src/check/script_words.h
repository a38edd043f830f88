#pragma once

#include "engine/script_vocabulary.h"

#include <QStringList>

#include <optional>

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
        File, // of the app, by a path that begins with its folder
    };

    struct Suggestion
    {
        QString text; // that takes the place of the word in front of the caret
        Kind kind;
        QString sentence; // about it; may be empty
    };

    // What can go on behind `before`, the line up to the caret. `lines` is the whole script, for its
    // variables; `folder` is where it lies, empty when that is not known.
    QList<Suggestion> suggestions(
        const QStringList &lines, const QString &before, Edition edition, const QString &folder = {}) const;

    // The same, narrowed down to what begins as the word in front of the caret does.
    struct Completion
    {
        qsizetype start = 0; // of that word, in the line
        QList<Suggestion> suggestions; // nothing when the word is one of them already
    };
    Completion completion(
        const QStringList &lines, const QString &before, Edition edition, const QString &folder = {}) const;

    // Whether a suggestion begins as `word` does, in any letter case.
    static bool goesOn(const Suggestion &suggestion, const QString &word);

    // Where the word in front of the caret begins that a suggestion takes the place of.
    static qsizetype wordStart(const QString &before);

    // The sentence and the fields of the command whose head is at `column` of a line (from 0); empty where
    // there is none.
    QString explanation(const QString &line, qsizetype column, Edition edition) const;

    // The argument around `column` of a line (from 0).
    struct Argument
    {
        Field field;
        QString written; // without blanks around it
        qsizetype start = 0; // from 0
    };
    std::optional<Argument> argumentAt(const QString &line, qsizetype column, Edition edition) const;

    // The command that somebody is writing the arguments of.
    struct Call
    {
        QString head;
        QString sentence;
        QList<Field> fields;
        qsizetype active = 0; // the field at the caret; the number of fields behind the last one
    };
    // `before` is the line up to the caret. Nothing in front of the first blank behind a head.
    std::optional<Call> call(const QString &before, Edition edition) const;

private:
    const CommandInfo *row(const QString &line, Edition edition) const;
    QList<Suggestion> heads(const QString &before, Edition edition) const;
    QList<Suggestion> values(
        const Field &field, bool isQuoted, const QStringList &variables, Edition edition) const;
    QList<Suggestion> files(const QString &folder, bool isQuoted) const;
    QStringList variables(const QStringList &lines, Edition edition) const;

    ScriptVocabulary m_vocabulary;
};

} // namespace plum
