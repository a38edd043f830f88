#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// How a failed expectation shows Qt's texts; found by argument-dependent look-up.

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &lines, std::ostream *out)
{
    *out << '[';
    for (const QString &line : lines)
        *out << "\n  \"" << line.toStdString() << '"';
    *out << ']';
}
