#include "engine/edition2/text_pieces.h"

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

QStringList charactersOf(const QString &text)
{
    QStringList characters;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isPair = text[at].isHighSurrogate() && at + 1 < text.size();
        characters += text.sliced(at, isPair ? 2 : 1);
        at += isPair ? 1 : 0;
    }
    return characters;
}

} // namespace

QStringList linesOf(const QString &text)
{
    QStringList lines = QString(text).replace(u"\r\n"_s, u"\n"_s).split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QStringList piecesOf(const QString &text, const QString &separator)
{
    if (text.isEmpty())
        return {};
    return separator.isEmpty() ? charactersOf(text) : text.split(separator);
}

} // namespace plum::edition2
