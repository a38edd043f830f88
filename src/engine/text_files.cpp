#include "engine/text_files.h"

#include "platform/paths.h"
#include "platform/text_codec.h"

#include <QFile>
#include <QFileInfo>

#include <ranges>

namespace plum {

QStringList splitLines(QStringView text)
{
    QStringList lines;
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype end = text.indexOf(u'\r', from);
        if (end < 0) {
            lines += text.sliced(from).toString();
            break;
        }
        lines += text.sliced(from, end - from).toString();
        const bool lineFeedFollows = end + 1 < text.size() && text[end + 1] == u'\n';
        from = end + (lineFeedFollows ? 2 : 1);
    }
    return lines;
}

bool TextFiles::appendLines(const QString &path, QStringList &list) const
{
    QFile file(m_paths.toSystem(path));
    if (path.isEmpty() || QFileInfo(file).isDir() || !file.open(QIODevice::ReadOnly))
        return false;
    list += splitLines(m_codec.fromSystem(file.readAll()));
    return true;
}

QString TextFiles::ReadAllText(const QString &path, ReadAllMode mode) const
{
    QStringList lines;
    appendLines(path, lines);
    if (mode == ReadAllMode::Joined)
        return lines.join(QString());

    qsizetype length = 0;
    for (const QString &line : lines)
        length += line.size() + 2;
    QString text;
    text.reserve(length);
    for (const QString &line : lines | std::views::reverse) {
        text += line;
        text += QLatin1StringView("\r\n");
    }
    return text;
}

} // namespace plum
