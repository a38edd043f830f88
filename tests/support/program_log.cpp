#include "support/program_log.h"

#include <QFile>

#include <algorithm>

namespace plum::test {

QStringList ProgramLog::lines() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeLast();
    return lines;
}

QStringList ProgramLog::seen(const QStringList &words) const
{
    QStringList found;
    for (const QString &line : seen()) {
        if (std::ranges::any_of(words, [&](const QString &word) { return line.startsWith(word); }))
            found += line;
    }
    return found;
}

QString ProgramLog::last(const QString &word) const
{
    const QStringList all = lines();
    const auto found = std::find_if(
        all.rbegin(), all.rend(), [&](const QString &line) { return line.startsWith(word + u' '); });
    return found == all.rend() ? QString() : found->sliced(word.size() + 1);
}

} // namespace plum::test
