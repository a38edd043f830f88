#include "support/dice.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::Dice;

namespace {

// What a script of `set` and `text.replace` lines must leave behind, worked out while its lines are written
// and without anything of the engine.
class ScriptModel
{
public:
    explicit ScriptModel(Dice &dice)
        : m_dice(dice)
    {
    }

    QString nextLine()
    {
        switch (m_dice.below(12)) {
        case 0:
            return m_dice.oneIn(2) ? QString() : u"// set.v0 \"no\""_s;
        case 1:
        case 2:
        case 3:
            return replaceLine();
        case 4:
            return m_lastSet ? keptArguments() : setLine();
        case 5:
            return m_lastSet ? keptCommand() : setLine();
        default:
            return setLine();
        }
    }

    std::map<QString, QString> variables;

private:
    // An expression as written, and its parts for working the value out again later.
    struct Expression
    {
        QString written;
        QStringList chunks; // texts before, between and after the variables
        QStringList names;
    };

    QString valueOf(const QString &name) const
    {
        const auto found = variables.find(name);
        return found == variables.end() ? name : found->second;
    }

    QString valueOf(const Expression &expression) const
    {
        QString value = expression.chunks[0];
        for (qsizetype at = 0; at < expression.names.size(); ++at)
            value += valueOf(expression.names[at]) + expression.chunks[at + 1];
        return value;
    }

    QString letters(int maxLength = 8) { return m_dice.text(u"abABc;\u00e9"_s, maxLength); }
    QString variable() { return u"v%1"_s.arg(m_dice.below(12)); }

    Expression literal()
    {
        Expression expression;
        QString written;
        QString value;
        for (int left = m_dice.below(3); left >= 0; --left) {
            const QString text = letters();
            written += text;
            value += text;
            if (m_dice.oneIn(4)) {
                written += u"_,_"_s;
                value += u',';
            }
        }
        return {u'"' + written + u'"', {value}, {}};
    }

    Expression reference()
    {
        const QString name = variable();
        return {u"set."_s + name, {QString(), QString()}, {name}};
    }

    Expression filled()
    {
        Expression expression{QString(), {letters()}, {}};
        expression.written = expression.chunks[0];
        for (int left = m_dice.below(3); left >= 0; --left) {
            expression.names += variable();
            expression.chunks += letters();
            expression.written += u"+?+"_s + expression.chunks.last();
        }
        // Without a text between them the last slot would take the list's plus with it.
        expression.chunks.last() += u'.';
        expression.written += u".+("_s;
        for (qsizetype at = 0; at < expression.names.size(); ++at)
            expression.written += (at > 0 ? u"+set."_s : u"set."_s) + expression.names[at];
        expression.written += u')';
        return expression;
    }

    // Templates make texts longer and longer; long ones are not built upon.
    Expression expression()
    {
        Expression candidate = m_dice.oneIn(3) ? filled() : m_dice.oneIn(2) ? reference() : literal();
        return valueOf(candidate).size() < 300 ? candidate : literal();
    }

    QString setLine()
    {
        const QString name = variable();
        m_lastExpression = expression();
        m_lastName = name;
        m_lastSet = true;
        variables[name] = valueOf(m_lastExpression);
        return u"set."_s + name + u' ' + m_lastExpression.written;
    }

    // A line without a blank: the expression of the line before, worked out anew.
    QString keptArguments()
    {
        m_lastName = variable();
        const QString value = valueOf(m_lastExpression);
        if (value.size() >= 300)
            return setLine();
        variables[m_lastName] = value;
        return u"set."_s + m_lastName;
    }

    // A head without a dot: the name of the line before.
    QString keptCommand()
    {
        m_lastExpression = expression();
        variables[m_lastName] = valueOf(m_lastExpression);
        return u"set "_s + m_lastExpression.written;
    }

    QString replaceLine()
    {
        m_lastSet = false;
        const QString name = variable();
        const Expression source = expression();
        const Expression find{u'"' + letters(2) + u'"', {}, {}};
        const QString findText = find.written.sliced(1, find.written.size() - 2);
        const Expression with = literal();
        const int count = m_dice.below(5) - 1;
        const int start = m_dice.below(9);
        const QString match = QStringList{QString(), u"true"_s, u"no"_s, u"maybe"_s}[m_dice.below(4)];

        const QString value = match == u"maybe"_s
            ? QString()
            : replaced(valueOf(source), findText, with.chunks[0], count, qMax(start, 1), match == u"no"_s);
        const QString word = m_dice.oneIn(2) ? u"replace"_s : u"Replace"_s;
        const QString line = u"text."_s + word + u" \""_s + name + u"\","_s + source.written + u','
            + find.written + u',' + with.written + u",\""_s + (count < 0 ? QString() : QString::number(count))
            + u"\",\""_s + (start == 0 ? QString() : QString::number(start)) + u"\",\""_s + match + u'"';
        variables[name] = value;
        return line;
    }

    static QString replaced(const QString &source, const QString &find, const QString &with, int count,
        int start, bool ignoreCase)
    {
        QString result;
        qsizetype at = start - 1;
        while (at < source.size()) {
            const QString here = source.mid(at, find.size());
            const bool found = ignoreCase ? here.toLower() == find.toLower() : here == find;
            if (found && !find.isEmpty() && count != 0) {
                result += with;
                at += find.size();
                --count;
            } else {
                result += source[at++];
            }
        }
        return result;
    }

    Dice &m_dice;
    Expression m_lastExpression;
    QString m_lastName;
    bool m_lastSet = false;
};

} // namespace

TEST(ScriptProperties, AThousandRandomLinesLeaveTheVariablesThatAModelExpects)
{
    for (quint32 seed = 1; seed <= 20 && !testing::Test::HasFailure(); ++seed) {
        Dice dice(seed);
        ScriptModel model(dice);
        recording::ScriptBench bench;
        QStringList lines;
        for (int line = 0; line < 1000; ++line)
            lines += model.nextLine();
        bench.runKeepingVariables(lines);

        EXPECT_EQ(bench.state.vardict.size(), static_cast<qsizetype>(model.variables.size()));
        for (const auto &[name, value] : model.variables)
            EXPECT_EQ(bench.variable(name), value) << name.toStdString() << ", seed " << seed;
    }
}
