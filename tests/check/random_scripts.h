#pragma once

#include "engine/script_vocabulary.h"
#include "support/dice.h"

#include <QStringList>

namespace plum::test {

// Makes scripts of edition 1 without a mistake, out of the tables of the namespaces.
class RandomScripts
{
public:
    RandomScripts(const ScriptVocabulary &vocabulary, quint32 seed);

    QStringList next();

private:
    struct Command
    {
        QString head;
        CommandInfo info;
    };

    void addLine(QStringList &script, bool isInLoop);
    void addLoop(QStringList &script);
    QString arguments(const Command &command);
    QString value(const Command &command, const Field &field, bool isOnly);
    QString text(bool isOnly);
    // A word of a choice that edition 1 has.
    const CommandInfo &oneOf(const Field &field);
    QString choice(const Field &field);
    QString key();
    QString keys(bool isCombination);
    QString number(int most);
    QString point();
    QString newName();
    QString knownName();

    QList<Command> m_commands;
    recording::Dice m_dice;
    QStringList m_names; // of the script so far
    QStringList m_set; // by the line that is being made
};

} // namespace plum::test
