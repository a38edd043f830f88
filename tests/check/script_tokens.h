#pragma once

#include "engine/script_vocabulary.h"

#include <QList>
#include <QString>

namespace plum::test {

// A piece of a line's syntax.
struct Token
{
    QString kind;
    qsizetype start;
    qsizetype length;
    bool isWord; // letter case counts in it
};

// The tokens of one line, and the places of digits that cannot be letters.
struct LineTokens
{
    QList<Token> tokens;
    QList<qsizetype> digits;
};

// A line of a script without mistakes, taken apart by the language's own grammar. What stands inside a text
// or a path is no token.
LineTokens tokensOfEdition1(const QString &line, const ScriptVocabulary &vocabulary);
LineTokens tokensOfEdition2(const QString &line, const ScriptVocabulary &vocabulary);

// Whether a field's text is made of digits.
bool isNumeric(FieldKind kind);

} // namespace plum::test
