#pragma once

#include <QHash>
#include <QString>

namespace plum {

// The variables of the running script: case-sensitive names without any prefix, text values.
class VariableStore
{
public:
    void SetVar(const QString &name, const QString &value) { m_values.insert(name, value); }

    // The value, or the empty text for a name that is absent.
    QString GetVar(const QString &name) const { return m_values.value(name); }

    bool contains(const QString &name) const { return m_values.contains(name); }
    qsizetype size() const { return m_values.size(); }
    void removeAll() { m_values.clear(); }

private:
    QHash<QString, QString> m_values;
};

} // namespace plum
