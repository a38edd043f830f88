#pragma once

#include <QHash>
#include <QStringList>

namespace plum {

// The variables of the running script: case-sensitive names without any prefix, text values.
class VariableStore
{
public:
    void SetVar(const QString &name, const QString &value) { m_values.insert({name}, value); }

    // The value, or the empty text for a name that is absent.
    QString GetVar(const QString &name) const { return m_values.value({name}); }

    // The value until the store changes; null for a name that is absent.
    const QString *find(const QString &name) const
    {
        const auto found = m_values.constFind({name});
        return found == m_values.constEnd() ? nullptr : &*found;
    }

    bool contains(const QString &name) const { return m_values.contains({name}); }
    qsizetype size() const { return m_values.size(); }

    // Sorted.
    QStringList names() const
    {
        QStringList all;
        for (auto value = m_values.keyBegin(); value != m_values.keyEnd(); ++value)
            all += value->text;
        all.sort();
        return all;
    }
    void removeAll() { m_values.clear(); }

private:
    // Qt's own hash of a text costs more than all the rest of a line that sets a variable: it is made for
    // long texts of strangers. Names are short, and a script that gives them an unlucky hash slows down
    // itself alone.
    struct Name
    {
        QString text;

        friend bool operator==(const Name &, const Name &) = default;
        friend size_t qHash(const Name &name, size_t seed) noexcept
        {
            // FNV-1a, a character at a time
            constexpr quint64 basis = 14695981039346656037U;
            constexpr quint64 prime = 1099511628211U;
            quint64 hash = basis ^ seed;
            for (const QChar character : name.text)
                hash = (hash ^ character.unicode()) * prime;
            return static_cast<size_t>(hash ^ (hash >> 32));
        }
    };

    QHash<Name, QString> m_values;
};

} // namespace plum
