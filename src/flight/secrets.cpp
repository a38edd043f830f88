#include "flight/secrets.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype most = 500; // each text that is recorded is held against all of them
constexpr qsizetype shortest = 3; // characters of one that is looked for inside texts

} // namespace

const QString Secrets::mark = u"•••"_s;

void Secrets::add(const QString &text)
{
    if (text.isEmpty() || m_texts.contains(text))
        return;
    if (m_texts.size() == most)
        m_areTooMany = true;
    else
        m_texts += text;
}

void Secrets::clear()
{
    m_texts.clear();
    m_areTooMany = false;
}

QString Secrets::without(const QString &text) const
{
    if (text.isEmpty() || m_texts.isEmpty())
        return text;
    if (m_areTooMany)
        return mark;
    QString left = text;
    for (const QString &secret : m_texts) {
        if (left == secret)
            return mark;
        if (secret.size() >= shortest)
            left.replace(secret, mark);
    }
    return left;
}

} // namespace plum
