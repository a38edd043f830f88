#include "engine/editions/later_edition.h"

#include <algorithm>
#include <charconv>

namespace plum {

namespace {

constexpr char mark[] = "\xEF\xBB\xBF";
constexpr char guide[] = "//guide:";
constexpr char edition[] = "//edition:";

// The number of an edition in a line that holds nothing else; 0 for every other line.
int editionIn(const QByteArray &line)
{
    if (!line.startsWith(edition))
        return 0;
    const QByteArray digits = line.sliced(qsizetype(qstrlen(edition)));
    int number = 0;
    const auto [end, problem] = std::from_chars(digits.begin(), digits.end(), number);
    return problem == std::errc() && end == digits.end() && digits[0] >= '1' && digits[0] <= '9' ? number : 0;
}

QByteArray takeLine(QByteArray &text)
{
    const qsizetype end = text.indexOf('\n');
    QByteArray line = end < 0 ? text : text.first(end);
    text = end < 0 ? QByteArray() : text.sliced(end + 1);
    if (end >= 0 && line.endsWith('\r'))
        line.chop(1);
    return line;
}

} // namespace

AskedEdition askedEdition(const QByteArray &script)
{
    // Two lines decide; a script may be long.
    constexpr qsizetype enough = 65536;
    QByteArray text = script.left(enough);
    if (text.startsWith(mark))
        text = text.sliced(qsizetype(qstrlen(mark)));
    const QByteArray first = takeLine(text);
    if (const int number = editionIn(first); number != 0)
        return {number, 1};
    if (first.startsWith(guide)) {
        if (const int number = editionIn(takeLine(text)); number != 0)
            return {number, 2};
    }
    return {};
}

QString ScriptStart::app() const
{
    const qsizetype separator = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return keyword.isEmpty() ? path.sliced(separator + 1) : keyword;
}

} // namespace plum
