#include "library/script_file.h"

#include "engine/editions/later_edition.h"
#include "platform/text_codec.h"

#include <algorithm>
#include <vector>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView lineEnd("\r\n");
constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

// Texts with more pairs of changed lines than this are compared no further.
constexpr qsizetype mostPairs = 4'000'000;

// What an editor takes for the end of a paragraph although no system ends lines with it.
bool endsParagraph(QChar c)
{
    return c == QChar::ParagraphSeparator || c == QChar(0xfdd0) || c == QChar(0xfdd1);
}

bool isOdd(const QByteArray &end)
{
    return !end.isEmpty() && end != "\r\n" && end != "\r";
}

// A text with CR LF in the place of everything that the editor takes for the end of a line.
QString asEdited(QString text)
{
    text.replace(lineEnd, "\n"_L1);
    for (QChar &c : text) {
        if (c == u'\r' || endsParagraph(c))
            c = u'\n';
    }
    return text.replace(u'\n', lineEnd);
}

} // namespace

ScriptFile::ScriptFile(const QByteArray &bytes, TextCodec &codec)
    : m_mark(bytes.startsWith(utf8Mark) ? utf8Mark.toByteArray() : QByteArray())
    , m_lineFeedsEndLines(askedEdition(bytes).number > 1)
{
    split(bytes.sliced(m_mark.size()), codec);
    const QString whole = asEdited(codec.fromSystem(bytes));
    const QString end = m_lines.isEmpty() || m_lines.last().end.isEmpty() ? QString() : QString(lineEnd);
    if (shown() + end == whole)
        return;
    // In some encodings a line alone reads as something else than in its file.
    const QString text = end.isEmpty() ? whole : whole.chopped(lineEnd.size());
    const QStringList texts = text.split(lineEnd);
    m_lines.clear();
    m_mark.clear();
    for (const QString &line : texts)
        m_lines += {line, codec.toSystem(line), "\r\n"};
    if (end.isEmpty())
        m_lines.last().end.clear();
}

void ScriptFile::split(const QByteArray &bytes, TextCodec &codec)
{
    const auto add = [&](QByteArrayView line, const QByteArray &end) {
        const QString text = codec.fromSystem(m_mark + line.toByteArray());
        qsizetype from = 0;
        for (qsizetype at = 0; at < text.size(); ++at) {
            if (!endsParagraph(text[at]))
                continue;
            const QString part = text.sliced(from, at - from);
            m_lines += {part, encoded(part, codec), encoded(QString(text[at]), codec)};
            from = at + 1;
        }
        const QString last = text.sliced(from);
        m_lines += {last, from == 0 ? line.toByteArray() : encoded(last, codec), end};
    };
    for (QByteArrayView rest(bytes); !rest.isEmpty();) {
        const auto end = std::ranges::find_if(rest, [](char c) { return c == '\r' || c == '\n'; });
        const qsizetype length = end - rest.begin();
        const qsizetype endLength = length == rest.size()            ? 0
            : rest.sliced(length).startsWith(QByteArrayView("\r\n")) ? 2
                                                                     : 1;
        add(rest.first(length), rest.sliced(length, endLength).toByteArray());
        rest = rest.sliced(length + endLength);
    }
}

QByteArray ScriptFile::encoded(const QString &text, TextCodec &codec) const
{
    return m_mark.isEmpty() ? codec.toSystem(text) : text.toUtf8();
}

QString ScriptFile::shown() const
{
    QStringList texts;
    for (const Line &line : m_lines)
        texts += line.text;
    return texts.join(lineEnd);
}

int ScriptFile::oddLineEnds() const
{
    return static_cast<int>(
        std::ranges::count_if(m_lines, [this](const Line &line) { return !endsLineOfRun(line); }));
}

bool ScriptFile::endsLineOfRun(const Line &line) const
{
    return !isOdd(line.end) || (m_lineFeedsEndLines && line.end == "\n");
}

int ScriptFile::runLineOf(int shown) const
{
    const auto before = std::min(qsizetype(shown), m_lines.size());
    return 1
        + static_cast<int>(std::count_if(m_lines.begin(), m_lines.begin() + before,
            [this](const Line &line) { return endsLineOfRun(line); }));
}

int ScriptFile::shownLineOf(int runLine) const
{
    int shown = 0;
    for (int line = 1; shown < m_lines.size() && line < runLine; ++shown)
        line += endsLineOfRun(m_lines[shown]) ? 1 : 0;
    return shown;
}

QList<qsizetype> ScriptFile::origins(const QStringList &texts) const
{
    QList<qsizetype> origins(texts.size(), -1);
    qsizetype first = 0;
    const qsizetype shorter = std::min(texts.size(), m_lines.size());
    for (; first < shorter && texts[first] == m_lines[first].text; ++first)
        origins[first] = first;
    qsizetype last = 0; // counted from the end
    for (; last < shorter - first; ++last) {
        const qsizetype now = texts.size() - 1 - last;
        const qsizetype before = m_lines.size() - 1 - last;
        if (texts[now] != m_lines[before].text)
            break;
        origins[now] = before;
    }

    // The longest common sequence of what is left in the middle.
    const qsizetype rows = texts.size() - first - last;
    const qsizetype columns = m_lines.size() - first - last;
    if (rows == 0 || columns == 0 || rows * columns > mostPairs)
        return origins;
    const qsizetype width = columns + 1;
    std::vector<int> lengths(static_cast<size_t>((rows + 1) * width));
    const auto length = [&](qsizetype row, qsizetype column) -> int & {
        return lengths[static_cast<size_t>(row * width + column)];
    };
    const auto same
        = [&](qsizetype row, qsizetype column) { return texts[first + row] == m_lines[first + column].text; };
    for (qsizetype row = rows - 1; row >= 0; --row) {
        for (qsizetype column = columns - 1; column >= 0; --column)
            length(row, column) = same(row, column)
                ? length(row + 1, column + 1) + 1
                : std::max(length(row + 1, column), length(row, column + 1));
    }
    for (qsizetype row = 0, column = 0; row < rows && column < columns;) {
        if (same(row, column))
            origins[first + row++] = first + column++;
        else if (length(row + 1, column) >= length(row, column + 1))
            ++row;
        else
            ++column;
    }
    return origins;
}

QList<ScriptFile::Written> ScriptFile::written(const QString &shown, LineEnds lineEnds) const
{
    const QStringList texts = shown.split(lineEnd);
    const QList<qsizetype> from = origins(texts);
    // An empty last line that is new is the line end of the one before.
    const bool endsAlready = texts.size() > 1 && texts.last().isEmpty() && from.last() < 0;
    const QByteArray lastEnd = m_lines.isEmpty() || endsAlready ? QByteArray() : m_lines.last().end;
    QList<Written> lines;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const Line *line = from[i] >= 0 ? &m_lines[from[i]] : nullptr;
        Written each{texts[i], line, {}};
        // A line that was changed where it stands keeps its end.
        if (!line && texts.size() == m_lines.size())
            line = &m_lines[i];
        const bool isLast = i == texts.size() - 1;
        const QByteArray end = isLast ? lastEnd : line ? line->end : QByteArray();
        const bool keeps = lineEnds == LineEnds::Kept && !end.isEmpty();
        if (keeps)
            each.end = end;
        else if (!isLast || !end.isEmpty())
            each.end = "\r\n";
        lines += each;
    }
    return lines;
}

QByteArray ScriptFile::withText(const QString &shown, LineEnds lineEnds, TextCodec &codec) const
{
    const QList<Written> lines = written(shown, lineEnds);
    QByteArray bytes = m_mark;
    for (const Written &line : lines)
        bytes += (line.kept ? line.kept->bytes : encoded(line.text, codec)) + line.end;
    // Lines in two encodings side by side would be read as something else.
    const QString meant = lines.last().end.isEmpty() ? shown : shown + lineEnd;
    return asEdited(codec.fromSystem(bytes)) == meant ? bytes : codec.toSystem(meant);
}

QString ScriptFile::textWith(const QString &shown, LineEnds lineEnds) const
{
    QString text;
    text.reserve(shown.size());
    for (const Written &line : written(shown, lineEnds)) {
        text += line.text;
        const bool isUsual = line.end.isEmpty() || line.end.endsWith('\n') || line.end.endsWith('\r');
        text += isUsual ? QString::fromLatin1(line.end) : QString(QChar::ParagraphSeparator);
    }
    return text;
}

} // namespace plum
