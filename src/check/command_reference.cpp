#include "check/command_reference.h"

#include "check/field_words.h"
#include "check/findings/check_words.h"
#include "check/findings/words.h"
#include "engine/edition2/own_words.h"

#include <QMap>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Which edition has it, where not both have.
QString editionOf(const CommandInfo &info)
{
    if (info.editions == Editions::Both)
        return {};
    return info.editions == Editions::One ? CheckWords::tr(" (edition 1)") : CheckWords::tr(" (edition 2)");
}

QString headOf(const QString &nameSpace, const CommandInfo &info)
{
    if (info.word.isEmpty())
        return nameSpace + u".name"_s;
    return nameSpace + u'.' + info.word.toString() + (info.word.endsWith(u'_') ? u"N"_s : QString());
}

// The words of a choice that have a sentence or fields of their own, a line each.
QString choicesOf(const Field &field)
{
    QString lines;
    if (field.kind != FieldKind::Choice) // keys say nothing of themselves
        return lines;
    for (const CommandInfo &choice : field.choices()) {
        if (choice.summary.isEmpty() && choice.usedFields().empty())
            continue;
        lines += u"  - `%1`%2: %3\n"_s.arg(usageOf(choice.word.toString(), choice.usedFields()),
            editionOf(choice), commandWords(choice.summary));
    }
    return lines;
}

QString sectionOf(const QString &nameSpace, const CommandInfo &info)
{
    QString section = u"\n### `%1`%2\n\n%3\n"_s.arg(
        usageOf(headOf(nameSpace, info), info.usedFields()), editionOf(info), commandWords(info.summary));
    if (!info.usedFields().empty())
        section += u'\n';
    for (const Field &field : info.usedFields())
        section += u"- %1\n%2"_s.arg(fieldInWords(field), choicesOf(field));
    return section;
}

} // namespace

QString commandReference(const ScriptVocabulary &vocabulary)
{
    QMap<QString, QList<CommandInfo>> commands;
    for (const edition2::OwnWord &own : edition2::ownWords()) {
        CommandInfo info = own.info;
        const QString nameSpace = own.nameSpace.toString();
        if (const CommandInfo *first = firstEditionRow(vocabulary, nameSpace, info.word.toString());
            first && first->word == info.word)
            info.editions = Editions::Both;
        commands[nameSpace] += info;
    }
    for (auto table = vocabulary.tables().constBegin(); table != vocabulary.tables().constEnd(); ++table) {
        for (const CommandInfo &info : *table) {
            // What the language itself understands in edition 2 is there already.
            const edition2::OwnWord *own = edition2::ownWord(table.key(), info.word);
            if (!own || own->info.word != info.word)
                commands[table.key()] += info;
        }
    }
    QString page = u"# "_s + CheckWords::tr("Commands") + u"\n\n"_s
        + CheckWords::tr(
            "Every command of both editions, from the tables that run and check scripts; `plumkit "
            "reference` prints this page, and a test holds both together. A field in brackets may be "
            "left out; `…` stands behind one that takes several arguments. [Writing "
            "apps](scripting.md) says how edition 2 is written, [edition 1](edition-1.md) is written "
            "in another way: there an empty field is written `\"\"`, texts, numbers and names stand "
            "in quotes.")
        + u'\n';
    for (auto table = commands.constBegin(); table != commands.constEnd(); ++table) {
        page += u"\n## %1\n"_s.arg(table.key());
        for (const CommandInfo &info : *table)
            page += sectionOf(table.key(), info);
    }
    return page;
}

} // namespace plum
