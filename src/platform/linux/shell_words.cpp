#include "platform/linux/shell_words.h"

#include <utility>

namespace plum {

namespace {

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

// In double quotes a backslash quotes only what would have a meaning there.
bool isQuotedByBackslash(QChar character)
{
    return character == u'"' || character == u'\\' || character == u'$' || character == u'`';
}

} // namespace

QStringList shellWords(const QString &text)
{
    QStringList words;
    QString word;
    bool inWord = false; // a pair of quotes around nothing is a word too
    QChar quote;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const bool hasNext = i + 1 < text.size();
        if (quote == u'\'') {
            if (character == quote)
                quote = {};
            else
                word += character;
        } else if (quote == u'"') {
            if (character == quote)
                quote = {};
            else if (character == u'\\' && hasNext && isQuotedByBackslash(text[i + 1]))
                word += text[++i];
            else
                word += character;
        } else if (isBlank(character)) {
            if (inWord)
                words += std::exchange(word, {});
            inWord = false;
        } else {
            inWord = true;
            if (character == u'\'' || character == u'"')
                quote = character;
            else if (character == u'\\' && hasNext)
                word += text[++i];
            else
                word += character;
        }
    }
    if (inWord)
        words += word;
    return words;
}

} // namespace plum
