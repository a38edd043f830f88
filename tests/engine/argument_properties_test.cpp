#include "support/dice.h"
#include "support/raised_by.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::Dice;
using plum::recording::raisedBy;

namespace {

constexpr int cases = 20'000;
const QString plainLetters = u"abcXYZ 0189_-/\\:;'?=<>\u00e4\u4e2d"_s;

// A piece of an argument text as a script writes it, and what it must evaluate to with either flag.
struct Part
{
    QString written;
    QString valueWithNames; // an unknown variable stands for its name
    QString valueWithEmpty; // an unknown variable is empty
};

Part same(const QString &written, const QString &value)
{
    return {written, value, value};
}

class Parts
{
public:
    explicit Parts(Dice &dice)
        : m_dice(dice)
    {
    }

    // The variables that are known: v0 to v4, with the values below.
    static QString valueOf(int variable)
    {
        return QStringList{u"Ann"_s, u"7"_s, QString(), u"a,b"_s, u"set.v0"_s}[variable];
    }

    Part any()
    {
        switch (m_dice.below(8)) {
        case 0:
            return quoted(false);
        case 1:
            return reference();
        case 2:
            return filled();
        case 3: {
            const QString word = m_dice.text(u"abc012 -"_s, 6);
            return same(word, QString());
        }
        case 4: {
            const QString token = m_dice.text(u"xyz01"_s, 3) + u".q"_s + m_dice.text(u"xyz."_s, 4);
            return same(token, token);
        }
        case 5:
            return same(u"str.r"_s, u"\r\n"_s);
        case 6:
            return same(u"mouse.xy"_s, u"3:-4"_s);
        default:
            return same(QString(), QString());
        }
    }

    Part quoted(bool mayHoldCommas)
    {
        QString written;
        QString value;
        for (int left = m_dice.below(5); left > 0; --left) {
            const QString letters
                = m_dice.text(plainLetters + u"+()."_s + (mayHoldCommas ? u","_s : QString()), 5);
            written += letters;
            value += letters;
            if (m_dice.oneIn(3)) {
                written += u"tarnwick_dou_"_s;
                value += u',';
            }
        }
        return same(u'"' + written + u'"', value);
    }

private:
    Part reference()
    {
        if (m_dice.oneIn(2)) {
            const int variable = m_dice.below(5);
            return same(u"set.v%1"_s.arg(variable), valueOf(variable));
        }
        const QString name = u"unknown"_s + m_dice.text(u"abc."_s, 3);
        return {u"set."_s + name, name, QString()};
    }

    Part filled()
    {
        const int nameCount = 1 + m_dice.below(4);
        QList<Part> names;
        for (int left = nameCount; left > 0; --left)
            names += reference();
        Part part;
        const int slotCount = m_dice.below(5);
        for (int slot = 0; slot < slotCount; ++slot) {
            const QString chunk = m_dice.text(plainLetters, 4);
            part.written += chunk + u"+?+"_s;
            const Part surplus = same(QString(), u"+?+"_s);
            const Part &name = nameCount == 1 ? names[0] : slot < nameCount ? names[slot] : surplus;
            part.valueWithNames += chunk + name.valueWithNames;
            part.valueWithEmpty += chunk + name.valueWithEmpty;
        }
        const QString tail = m_dice.text(plainLetters, 4) + u'!';
        part.valueWithNames += tail;
        part.valueWithEmpty += tail;
        part.written += tail + u"+("_s;
        for (int name = 0; name < nameCount; ++name)
            part.written += (name > 0 ? u"+"_s : QString()) + names[name].written;
        part.written += u')';
        return part;
    }

    Dice &m_dice;
};

class ArgumentProperties : public testing::Test
{
protected:
    ArgumentProperties()
    {
        for (int variable = 0; variable < 5; ++variable)
            bench.state.vardict.SetVar(u"v%1"_s.arg(variable), Parts::valueOf(variable));
        bench.platform.pointer().at = QPoint(3, -4);
    }

    void expectPart(const QString &text, int index, const Part &part)
    {
        EXPECT_EQ(bench.reader.GetArg(text, u","_s, index, UnknownVariable::IsItsName), part.valueWithNames)
            << text.toStdString() << " at " << index;
        EXPECT_EQ(bench.reader.GetArg(text, u","_s, index, UnknownVariable::IsEmpty), part.valueWithEmpty)
            << text.toStdString() << " at " << index;
    }

    recording::ScriptBench bench;
};

} // namespace

TEST_F(ArgumentProperties, EachPieceOfManyHasItsOwnValue)
{
    Dice dice(1);
    Parts parts(dice);
    for (int round = 0; round < cases && !HasFailure(); ++round) {
        QList<Part> pieces;
        QStringList written;
        for (int left = 2 + dice.below(6); left > 0; --left) {
            pieces += parts.any();
            written += pieces.last().written;
        }
        const QString text = written.join(u',');
        for (int index = 0; index < pieces.size(); ++index)
            expectPart(text, index, pieces[index]);
        const int beyond = static_cast<int>(pieces.size()) + dice.below(3);
        EXPECT_EQ(raisedBy([&] { bench.reader.GetArg(text, u","_s, beyond, UnknownVariable::IsItsName); }),
            RunTimeError::SubscriptOutOfRange)
            << text.toStdString();
    }
}

TEST_F(ArgumentProperties, OnePieceAnswersEveryIndex)
{
    Dice dice(2);
    Parts parts(dice);
    for (int round = 0; round < cases && !HasFailure(); ++round) {
        const Part part = dice.oneIn(3) ? parts.quoted(true) : parts.any();
        expectPart(part.written, dice.below(10), part);
    }
}

TEST_F(ArgumentProperties, AnyTextEitherEvaluatesOrRaisesASubscriptError)
{
    Dice dice(3);
    for (int round = 0; round < cases && !HasFailure(); ++round) {
        const QString text = dice.text(u"\"\"\"++?+?(().,,abs set.v0 me.enter_input_2 tarnwick_dou_"_s, 40);
        const int raised
            = raisedBy([&] { bench.reader.GetArg(text, u","_s, dice.below(4), UnknownVariable::IsItsName); });
        EXPECT_TRUE(raised == 0 || (raised == RunTimeError::SubscriptOutOfRange && text.contains(u',')))
            << raised << ": " << text.toStdString();
    }
}
