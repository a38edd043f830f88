#include "engine/text_files.h"

#include "platform/paths.h"
#include "platform/text_codec.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace plum {

namespace {

constexpr QLatin1StringView lineEnd("\r\n");

// Where the line after the line end at `carriageReturn` begins.
qsizetype afterLineEnd(QStringView text, qsizetype carriageReturn)
{
    const qsizetype next = carriageReturn + 1;
    return next < text.size() && text[next] == u'\n' ? next + 1 : next;
}

// Hands the lines of `text` to `take` one after another, until it returns false.
template <typename Take> void eachLine(QStringView text, Take take)
{
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype end = text.indexOf(u'\r', from);
        if (end < 0) {
            take(text.sliced(from));
            return;
        }
        if (!take(text.sliced(from, end - from)))
            return;
        from = afterLineEnd(text, end);
    }
}

// Closes the lines up in place: a copy would double the memory of a large file.
void removeLineEnds(QString &text)
{
    QChar *to = text.data();
    eachLine(text, [&to](QStringView line) {
        to = std::copy(line.begin(), line.end(), to);
        return true;
    });
    text.truncate(to - text.constData());
}

QString reversedLines(QStringView text)
{
    QString reversed;
    reversed.reserve(text.size() + lineEnd.size());
    qsizetype end = text.endsWith(lineEnd) ? text.size() - 2 : text.size() - (text.endsWith(u'\r') ? 1 : 0);
    while (end >= 0 && !text.isEmpty()) {
        const qsizetype previous = end == 0 ? -1 : text.lastIndexOf(u'\r', end - 1);
        const qsizetype from = previous < 0 ? 0 : afterLineEnd(text, previous);
        reversed += text.sliced(from, end - from);
        reversed += lineEnd;
        end = previous;
    }
    return reversed;
}

} // namespace

QStringList splitLines(QStringView text)
{
    QStringList lines;
    eachLine(text, [&lines](QStringView line) {
        lines += line.toString();
        return true;
    });
    return lines;
}

bool TextFiles::isReadable(const QString &path) const
{
    const QFileInfo file(m_paths.toSystem(path));
    return !path.isEmpty() && m_paths.mayRead(file.filePath()) && file.isFile() && file.isReadable()
        && file.size() <= largestFile;
}

std::optional<QByteArray> TextFiles::bytes(const QString &path) const
{
    QFile file(m_paths.toSystem(path));
    if (path.isEmpty() || !m_paths.mayRead(file.fileName()) || !QFileInfo(file).isFile()
        || file.size() > largestFile || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.readAll();
}

std::optional<QString> TextFiles::wholeText(const QString &path) const
{
    const std::optional<QByteArray> all = bytes(path);
    return all ? std::optional(m_codec.fromSystem(*all)) : std::nullopt;
}

bool TextFiles::appendLines(const QString &path, QStringList &list) const
{
    const std::optional<QString> text = wholeText(path);
    if (text)
        list += splitLines(*text);
    return text.has_value();
}

QStringList TextFiles::linesOf(const QByteArray &bytes) const
{
    return splitLines(m_codec.fromSystem(bytes));
}

QString TextFiles::ReadAllText(const QString &path, ReadAllMode mode) const
{
    QString text = wholeText(path).value_or(QString());
    if (mode == ReadAllMode::ReversedLines)
        return reversedLines(text);
    removeLineEnds(text);
    return text;
}

QString TextFiles::ReadLine(const QString &path, qint32 number) const
{
    const QString text = wholeText(path).value_or(QString());
    QString found;
    qint32 current = 0;
    eachLine(text, [&](QStringView line) {
        if (++current != number)
            return true;
        found = line.toString();
        return false;
    });
    return found;
}

} // namespace plum
