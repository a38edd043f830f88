#include "check/script_words.h"

#include "check/edition1/references.h"
#include "check/field_words.h"
#include "check/findings/words.h"
#include "commands/key_names.h"
#include "engine/edition2/own_words.h"

#include <QDirIterator>
#include <QSet>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostFiles = 200; // that are suggested

QString headOf(const QString &line)
{
    const qsizetype start = std::ranges::find_if(line, [](QChar c) { return c != u' '; }) - line.begin();
    const qsizetype end = line.indexOf(u' ', start);
    return line.sliced(start, (end < 0 ? line.size() : end) - start);
}

struct Arguments
{
    QStringList pieces; // as they are written, the last one up to the end
    bool endsInQuotes = false;
};

// Commas between quotes belong to a text while somebody writes it, in either edition.
Arguments argumentsIn(const QString &text)
{
    Arguments found{{QString()}};
    for (const QChar c : text) {
        if (c == u'"')
            found.endsInQuotes = !found.endsInQuotes;
        if (c == u',' && !found.endsInQuotes)
            found.pieces += QString();
        else
            found.pieces.back() += c;
    }
    return found;
}

QString unquoted(const QString &piece)
{
    QString text = piece.trimmed();
    return text.remove(u'"');
}

// The fields of a row, with those that the first argument brings along.
QList<Field> fieldsOf(const CommandInfo &info, const QString &firstArgument)
{
    QList<Field> fields;
    for (const Field &field : info.usedFields())
        fields += field;
    if (fields.isEmpty())
        return fields;
    const Field first = fields.front();
    for (const CommandInfo &choice : first.choices()) {
        if (choice.word != firstArgument || choice.usedFields().empty())
            continue;
        fields = {first};
        for (const Field &field : choice.usedFields())
            fields += field;
    }
    return fields;
}

// The field of an argument. A list of keys, and a field that repeats, take what follows, too; which of those
// behind it belong to the last fields is known at the line's end.
qsizetype fieldIndex(const QList<Field> &fields, qsizetype argument)
{
    for (qsizetype i = 0; i < fields.size() && i <= argument; ++i) {
        if (fields[i].kind == FieldKind::KeyList || fields[i].mayRepeat)
            return i;
    }
    return argument;
}

QString argumentsOf(const QString &line)
{
    const QString trimmed = line.trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    return blank < 0 ? QString() : trimmed.sliced(blank + 1);
}

} // namespace

const CommandInfo *ScriptWords::row(const QString &line, Edition edition) const
{
    const QString head = headOf(line);
    const qsizetype dot = head.indexOf(u'.');
    if (dot < 0)
        return nullptr;
    const QString nameSpace = head.first(dot);
    const QString word = head.sliced(dot + 1);
    if (edition == Edition::One)
        return firstEditionRow(m_vocabulary, nameSpace, word);
    const edition2::OwnWord *own = edition2::ownWord(nameSpace, word);
    return own ? &own->info : m_vocabulary.find(nameSpace, word);
}

QStringList ScriptWords::variables(const QStringList &lines, Edition edition) const
{
    QSet<QString> names;
    for (const QString &line : lines) {
        const QString head = headOf(line);
        if (head.startsWith("set."_L1))
            names += head.sliced(4);
        const CommandInfo *info = row(line, edition);
        if (!info)
            continue;
        const QStringList pieces = argumentsIn(argumentsOf(line)).pieces;
        const QList<Field> fields = fieldsOf(*info, unquoted(pieces.front()));
        for (qsizetype i = 0; i < std::min(fields.size(), pieces.size()); ++i) {
            if (fields[i].kind == FieldKind::Variable)
                names += unquoted(pieces[i]);
        }
    }
    names.remove(QString());
    QStringList sorted(names.cbegin(), names.cend());
    sorted.sort();
    return sorted;
}

QList<ScriptWords::Suggestion> ScriptWords::heads(const QString &before, Edition edition) const
{
    QList<Suggestion> found;
    const qsizetype dot = before.indexOf(u'.');
    if (dot < 0) {
        QStringList names = namespacesOf(m_vocabulary, edition);
        if (edition == Edition::Two) {
            for (const edition2::OwnWord &own : edition2::ownWords())
                names += own.nameSpace.toString();
        }
        names.sort();
        names.removeDuplicates();
        for (const QString &name : names) {
            if (!name.isEmpty())
                found += Suggestion{name, Kind::Namespace, {}};
        }
        return found;
    }
    const QString nameSpace = before.first(dot);
    for (const CommandInfo &info : m_vocabulary.tables().value(nameSpace)) {
        if (info.existsIn(edition) && !info.word.isEmpty())
            found += Suggestion{info.word.toString(), Kind::Command, commandWords(info.summary)};
    }
    for (const edition2::OwnWord &own : edition2::ownWords()) {
        if (edition == Edition::Two && own.nameSpace == nameSpace && !own.info.word.isEmpty())
            found += Suggestion{own.info.word.toString(), Kind::Command, commandWords(own.info.summary)};
    }
    return found;
}

QList<ScriptWords::Suggestion> ScriptWords::values(
    const Field &field, bool isQuoted, const QStringList &names, Edition edition) const
{
    QList<Suggestion> found;
    // Edition 1 has no bare words.
    const auto word = [&](const QString &text) {
        return edition == Edition::One && !isQuoted ? u'"' + text + u'"' : text;
    };
    const bool isKey = field.kind == FieldKind::KeyName || field.kind == FieldKind::KeyList;
    for (const CommandInfo &choice : field.choices()) {
        if (choice.existsIn(edition))
            found += Suggestion{
                word(choice.word.toString()), isKey ? Kind::Key : Kind::Choice, commandWords(choice.summary)};
    }
    // Edition 1 has a table of its own.
    if (isKey && edition == Edition::One) {
        for (const KeyName &key : keycodeasc()) {
            if (key.returned && !key.name.isEmpty())
                found += Suggestion{word(key.name.toString().toLower()), Kind::Key, {}};
        }
    }
    if (field.kind == FieldKind::Variable) {
        for (const QString &name : names)
            found += Suggestion{word(name), Kind::Variable, {}};
        return found;
    }
    if (isQuoted)
        return found;
    for (const QString &name : names)
        found += Suggestion{u"set."_s + name, Kind::Variable, {}};
    for (const QString &prefix : edition1::referencePrefixes()) {
        for (const QString &name : edition1::referenceNames(prefix))
            found += Suggestion{prefix + u'.' + name, Kind::Reference, {}};
    }
    return found;
}

QList<ScriptWords::Suggestion> ScriptWords::files(const QString &folder, bool isQuoted) const
{
    QList<Suggestion> found;
    if (folder.isEmpty())
        return found;
    QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
    for (int left = mostFiles; left > 0 && entries.hasNext(); --left) {
        const QString path = u"_pfold_/"_s + QDir(folder).relativeFilePath(entries.next());
        found += Suggestion{isQuoted ? path : u'"' + path + u'"', Kind::File, {}};
    }
    std::ranges::sort(found, {}, &Suggestion::text);
    return found;
}

QList<ScriptWords::Suggestion> ScriptWords::suggestions(
    const QStringList &lines, const QString &before, Edition edition, const QString &folder) const
{
    QString written = before;
    if (edition == Edition::Two) {
        while (written.startsWith(u' '))
            written.remove(0, 1);
    }
    if (written.startsWith("//"_L1))
        return {};
    const qsizetype blank = written.indexOf(u' ');
    if (blank < 0)
        return heads(written, edition);
    static constexpr Field anyText{u"value", FieldKind::Text};
    const CommandInfo *info = row(written, edition);
    const Arguments arguments = argumentsIn(written.sliced(blank + 1));
    Field field = anyText;
    if (info) {
        const QList<Field> fields = fieldsOf(*info, unquoted(arguments.pieces.front()));
        const qsizetype index = fieldIndex(fields, arguments.pieces.size() - 1);
        if (index < fields.size())
            field = fields[index];
    }
    QList<Suggestion> found = values(field, arguments.endsInQuotes, variables(lines, edition), edition);
    if (field.kind == FieldKind::Path)
        found += files(folder, arguments.endsInQuotes);
    return found;
}

// A head is written in two words; in quotes, a text is one word up to its end.
qsizetype ScriptWords::wordStart(const QString &before)
{
    const auto isNoBlank = [](QChar c) { return c != u' '; };
    const qsizetype head = std::ranges::find_if(before, isNoBlank) - before.cbegin();
    const qsizetype blank = before.indexOf(u' ', head);
    if (blank < 0)
        return std::max(head, before.indexOf(u'.', head) + 1);
    const Arguments arguments = argumentsIn(before.sliced(blank + 1));
    if (arguments.endsInQuotes)
        return before.lastIndexOf(u'"') + 1;
    const auto isEnd = [](QChar c) { return c == u' ' || c == u',' || c == u'"'; };
    const auto last = std::find_if(before.crbegin(), before.crend(), isEnd);
    return last.base() - before.cbegin();
}

// Quotes that are missing come with the suggestion.
bool ScriptWords::goesOn(const Suggestion &suggestion, const QString &word)
{
    const bool addsQuote = suggestion.text.startsWith(u'"') && !word.startsWith(u'"');
    return QStringView(suggestion.text).sliced(addsQuote ? 1 : 0).startsWith(word, Qt::CaseInsensitive);
}

ScriptWords::Completion ScriptWords::completion(
    const QStringList &lines, const QString &before, Edition edition, const QString &folder) const
{
    Completion found{wordStart(before), {}};
    const QString word = before.sliced(found.start);
    for (const Suggestion &suggestion : suggestions(lines, before, edition, folder)) {
        if (!word.isEmpty() && suggestion.text == word)
            return {found.start, {}};
        if (goesOn(suggestion, word))
            found.suggestions += suggestion;
    }
    return found;
}

std::optional<ScriptWords::Argument> ScriptWords::argumentAt(
    const QString &line, qsizetype column, Edition edition) const
{
    const CommandInfo *info = row(line, edition);
    const qsizetype head = line.indexOf(headOf(line));
    const qsizetype blank = line.indexOf(u' ', head);
    if (!info || blank < 0 || column <= blank)
        return {};
    const QStringList pieces = argumentsIn(line.sliced(blank + 1)).pieces;
    const QList<Field> fields = fieldsOf(*info, unquoted(pieces.front()));
    qsizetype start = blank + 1;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (column > start + pieces[i].size()) {
            start += pieces[i].size() + 1;
            continue;
        }
        const qsizetype index = fieldIndex(fields, i);
        if (index >= fields.size())
            return {};
        const QString written = pieces[i].trimmed();
        return Argument{fields[index], written, start + (written.isEmpty() ? 0 : pieces[i].indexOf(written))};
    }
    return {};
}

std::optional<ScriptWords::Call> ScriptWords::call(const QString &before, Edition edition) const
{
    const QString head = headOf(before);
    const qsizetype start = before.indexOf(head);
    const qsizetype blank = before.indexOf(u' ', start);
    const CommandInfo *info = row(before, edition);
    if (!info || blank < 0)
        return {};
    const QStringList pieces = argumentsIn(before.sliced(blank + 1)).pieces;
    const QList<Field> fields = fieldsOf(*info, unquoted(pieces.front()));
    return Call{head, commandWords(info->summary), fields, fieldIndex(fields, pieces.size() - 1)};
}

QString ScriptWords::explanation(const QString &line, qsizetype column, Edition edition) const
{
    const QString head = headOf(line);
    const qsizetype start = line.indexOf(head);
    const CommandInfo *info = row(line, edition);
    if (!info || column < start || column > start + head.size())
        return {};
    QStringList lines{commandWords(info->summary)};
    if (!info->usedFields().empty())
        lines += QStringList{QString(), usageOf(head, info->usedFields()), QString()};
    for (const Field &field : info->usedFields())
        lines += u"- "_s + fieldInWords(field);
    return lines.join(u'\n');
}

} // namespace plum
