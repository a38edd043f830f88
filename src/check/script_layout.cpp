#include "check/script_layout.h"

#include "engine/edition2/line_reader.h"
#include "engine/edition2/own_words.h"

#include <QStringList>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int blanksOfABlock = 4;

QString trimmedLine(QStringView line)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!line.isEmpty() && isBlank(line.back()))
        line.chop(1);
    while (!line.isEmpty() && isBlank(line.front()))
        line = line.sliced(1);
    return line.toString();
}

edition2::Place placeOf(const QString &line)
{
    QList<edition2::Mistake> known; // the checker tells of them
    const edition2::Line read = edition2::readLine(line, 1, known);
    const edition2::OwnWord *own = edition2::ownWord(read.nameSpace, read.command);
    return own ? own->place : edition2::Place::Plain;
}

QString indented(const QStringList &lines, const QString &lineEnd)
{
    using enum edition2::Place;
    QStringList laid;
    int depth = 0;
    for (const QString &line : lines) {
        const QString text = trimmedLine(line);
        const edition2::Place place = placeOf(text);
        if (place == Continues || place == Closes)
            depth = std::max(depth - 1, 0);
        laid += text.isEmpty() ? text : QString(qsizetype(depth) * blanksOfABlock, u' ') + text;
        if (place == Opens || place == Continues)
            ++depth;
    }
    return laid.join(lineEnd);
}

} // namespace

QString laidOut(const QString &script, Edition edition)
{
    QStringList lines = script.split(u'\n');
    const bool hasReturns = lines.front().endsWith(u'\r');
    if (edition == Edition::One) {
        QString unified = script;
        unified.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n"_s, u"\r\n"_s);
        return unified;
    }
    for (QString &line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    return indented(lines, hasReturns ? u"\r\n"_s : u"\n"_s);
}

} // namespace plum
