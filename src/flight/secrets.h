#pragma once

#include <QString>
#include <QStringList>

namespace plum {

// Texts that are not to be seen in what is recorded: what the user has answered, what the clipboard held, and
// what a script made of these.
class Secrets
{
public:
    // What stands in the place of a secret.
    static const QString mark;

    void add(const QString &text);
    void clear();
    bool isEmpty() const { return m_texts.isEmpty(); }

    // `text` without the secrets that stand in it. Of secrets of one or two characters only those that are
    // the whole text are found: each word has such letters.
    QString without(const QString &text) const;

private:
    QStringList m_texts;
    bool m_areTooMany = false; // every text is a secret then
};

} // namespace plum
