#pragma once

#include "engine/script_vocabulary.h"
#include "support/dice.h"

#include <QStringList>

namespace plum::test {

// Makes scripts of edition 2 without a mistake, out of the tables of the namespaces: values flow through a
// few variables, paths through one of their own, since what is not known is never in Plum's folder; lines
// stand in repetitions, conditions, tries and a part. They neither ask nor tell, so that they run to their
// end, and never tell the time.
class RandomEdition2Scripts
{
public:
    RandomEdition2Scripts(const ScriptVocabulary &vocabulary, quint32 seed);

    QStringList next();

private:
    struct Command
    {
        QString head;
        CommandInfo info;
    };

    QStringList lines(int most, int depth);
    QStringList block(int depth);
    QString line();
    QStringList arguments(std::span<const Field> fields);
    QString value(const Field &field);
    QString text();
    QString path();
    QString point();
    QString condition();
    QString reference();
    QString variable();
    QString oneOf(const QStringList &words) { return words[m_dice.below(int(words.size()))]; }

    QList<Command> m_commands;
    recording::Dice m_dice;
};

} // namespace plum::test
