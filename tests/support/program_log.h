#pragma once

#include <QString>
#include <QStringList>

namespace plum::test {

// The lines that another program writes into a file while a test looks on.
class ProgramLog
{
public:
    explicit ProgramLog(const QString &path)
        : m_path(path)
    {
    }

    const QString &path() const { return m_path; }

    // Every whole line so far; one that is not complete yet is left for later.
    QStringList lines() const;

    // Everything since the last forget(), oldest first.
    QStringList seen() const { return lines().mid(m_forgotten); }
    // Only what begins with one of `words`.
    QStringList seen(const QStringList &words) const;
    void forget() { m_forgotten = lines().size(); }

    // What follows `word` and a blank in the last line that begins so; a null text when there is none.
    QString last(const QString &word) const;

private:
    QString m_path;
    qsizetype m_forgotten = 0;
};

} // namespace plum::test
