#include "sheet/possible_text.h"

#include "sheet/objects.h"

#include <algorithm>

namespace plum {

namespace {

// More texts than these are as good as any.
constexpr qsizetype mostTexts = 16;
constexpr qsizetype longestText = 8192; // characters

} // namespace

PossibleText PossibleText::known(const QString &text)
{
    PossibleText possible;
    possible.add(text);
    return possible;
}

PossibleText PossibleText::unknown()
{
    return known(QString(anyText));
}

PossibleText PossibleText::givenByUser()
{
    PossibleText possible;
    possible.m_isGiven = true;
    return possible;
}

bool PossibleText::isUnknown() const
{
    return std::ranges::any_of(m_texts, [](const QString &text) { return text.contains(anyText); });
}

const QString *PossibleText::certain() const
{
    return m_texts.size() == 1 && !m_isGiven && !isUnknown() ? &m_texts.front() : nullptr;
}

void PossibleText::add(const QString &text)
{
    if (m_texts.contains(text))
        return;
    if (m_texts.size() >= mostTexts || text.size() > longestText)
        m_texts = {QString(anyText)};
    else if (m_texts != QStringList(QString(anyText)))
        m_texts += text;
}

bool PossibleText::join(const PossibleText &other)
{
    const PossibleText before = *this;
    m_isGiven = m_isGiven || other.m_isGiven;
    if (other.m_texts.contains(QString(anyText)))
        m_texts = {QString(anyText)};
    for (const QString &text : other.m_texts)
        add(text);
    return *this != before;
}

PossibleText PossibleText::followedBy(const PossibleText &other) const
{
    // The empty text leaves the other as it is, a given one too.
    if (const QString *text = certain(); text && text->isEmpty())
        return other;
    if (const QString *text = other.certain(); text && text->isEmpty())
        return *this;
    const auto parts = [](const PossibleText &possible) {
        QStringList texts = possible.m_texts;
        if (possible.m_isGiven)
            texts += QString(anyText);
        return texts;
    };
    PossibleText both;
    for (const QString &first : parts(*this)) {
        for (const QString &second : parts(other))
            both.add(first + second);
    }
    return both;
}

} // namespace plum
