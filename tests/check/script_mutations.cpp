#include "check/script_mutations.h"

#include "check/script_tokens.h"
#include "engine/editions/later_edition.h"

#include <array>

namespace plum::test {

using namespace Qt::StringLiterals;

namespace {

struct Lookalike
{
    QChar digit;
    QChar letter;
};
constexpr std::array lookalikes{
    Lookalike{u'0', u'O'},
    Lookalike{u'1', u'l'},
    Lookalike{u'5', u'S'},
};

QString otherCase(QString word)
{
    for (QChar &c : word)
        c = c.isUpper() ? c.toLower() : c.toUpper();
    return word;
}

class Mutations
{
public:
    explicit Mutations(const QStringList &script)
        : m_script(script)
    {
    }

    void takeLine(int number, const LineTokens &line)
    {
        m_number = number;
        const QString &text = m_script[number];
        for (qsizetype i = 0; i < line.tokens.size(); ++i) {
            const Token &token = line.tokens[i];
            const QString word = text.sliced(token.start, token.length);
            replace(token.start, token.length, {}, token.kind + u" deleted"_s);
            replace(token.start, token.length, word + word, token.kind + u" doubled"_s);
            if (token.isWord)
                replace(token.start, token.length, otherCase(word), token.kind + u" in another case"_s);
            if (i + 1 < line.tokens.size())
                exchange(token, line.tokens[i + 1]);
        }
        for (const qsizetype at : line.digits) {
            for (const auto &[digit, letter] : lookalikes) {
                if (text[at] == digit)
                    replace(at, 1, letter, u"digit replaced"_s);
            }
        }
    }

    QList<Mutant> mutants;

private:
    void replace(qsizetype start, qsizetype length, const QString &with, const QString &what)
    {
        const QString &text = m_script[m_number];
        const QString changed = text.first(start) + with + text.sliced(start + length);
        if (changed == text)
            return;
        Mutant mutant{m_script, m_number, what};
        mutant.script[m_number] = changed;
        mutants += mutant;
    }

    // What stands between the two stays where it is.
    void exchange(const Token &a, const Token &b)
    {
        const QString &text = m_script[m_number];
        const qsizetype endOfA = a.start + a.length;
        replace(a.start, b.start + b.length - a.start,
            text.sliced(b.start, b.length) + text.sliced(endOfA, b.start - endOfA)
                + text.sliced(a.start, a.length),
            a.kind + u" and "_s + b.kind + u" exchanged"_s);
    }

    const QStringList &m_script;
    int m_number = 0;
};

} // namespace

QList<Mutant> mutantsOf(const QStringList &script, const ScriptVocabulary &vocabulary)
{
    const bool isLater = askedEdition(script.join(u'\n').toUtf8()).number > 1;
    Mutations mutations(script);
    for (int i = 0; i < script.size(); ++i) {
        if (!script[i].isEmpty() && !script[i].startsWith("//"_L1))
            mutations.takeLine(i,
                isLater ? tokensOfEdition2(script[i], vocabulary) : tokensOfEdition1(script[i], vocabulary));
    }
    return mutations.mutants;
}

} // namespace plum::test
