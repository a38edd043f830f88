#pragma once

#include <QString>
#include <QStringList>

namespace plum {

// What a value may be when a script runs: one of a few texts, in which `anyText` stands for a part that is
// not known, or a text that the user gives.
class PossibleText
{
public:
    PossibleText() = default; // nothing: there is no such value

    static PossibleText known(const QString &text);
    static PossibleText unknown();
    static PossibleText givenByUser();

    const QStringList &texts() const { return m_texts; }
    bool isGiven() const { return m_isGiven; }
    bool isNone() const { return m_texts.isEmpty() && !m_isGiven; }
    bool isUnknown() const;

    // The one text that it is for certain; null where there is none.
    const QString *certain() const;

    // It may be the other as well. Whether that is news.
    bool join(const PossibleText &other);

    // One behind the other.
    PossibleText followedBy(const PossibleText &other) const;

    bool operator==(const PossibleText &) const = default;

private:
    void add(const QString &text);

    QStringList m_texts; // each once
    bool m_isGiven = false;
};

} // namespace plum
