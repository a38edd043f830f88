#include "check/edition2/edition2_check.h"

#include "check/edition2/scope_walk.h"
#include "engine/edition2/program.h"

#include <QFile>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPart = qint64(1) << 20; // bytes of a file of parts that is read for a check

std::optional<QString> readBeside(const AppFiles &files, const QString &name)
{
    QFile file(files.resolved(u"_pfold_/"_s + name));
    if (file.size() > largestPart || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

bool isOfParts(const Line &line)
{
    return line.word == Word::PartStart || line.word == Word::PartRun || line.word == Word::PartUse;
}

// What decides on a line's place in the tree; the rest is looked up in its record. Copying whole lines would
// take most of the time of a check.
Line outlineOf(const Line &line)
{
    if (isOfParts(line))
        return line;
    return {.word = line.word, .nameSpace = line.nameSpace, .command = line.command, .at = line.at};
}

void gatherRuns(const std::vector<Statement> &statements, std::vector<Statement> &runs)
{
    for (const Statement &statement : statements) {
        if (!statement.isBlock() && statement.line.word == Word::PartRun)
            runs.push_back(statement);
        for (const Section &section : statement.sections)
            gatherRuns(section.body, runs);
    }
}

// The tree without all that concerns no part: what the linker judges.
Tree partsOf(const Tree &tree)
{
    Tree parts;
    for (const Statement &statement : tree.statements) {
        if (statement.isBlock() && statement.sections.front().head.word == Word::PartStart) {
            Statement part{statement.line, {{statement.sections.front().head, {}}}};
            gatherRuns(statement.sections.front().body, part.sections.front().body);
            parts.statements.push_back(std::move(part));
        } else if (!statement.isBlock() && isOfParts(statement.line)) {
            parts.statements.push_back(statement);
        } else {
            for (const Section &section : statement.sections)
                gatherRuns(section.body, parts.statements);
        }
    }
    return parts;
}

void checkLinks(Parsed parsed, const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report)
{
    const QString own;
    const Linked linked = link(own, std::move(parsed),
        {vocabulary, [](const QString &) -> Handler * { return nullptr; },
            [&files](const QString &name) { return readBeside(files, name); }});
    for (const ScriptMistake &mistake : linked.mistakes) {
        const bool isHere = mistake.file == own;
        report.add(isHere ? mistake.line : 1, isHere ? mistake.column : 1, u"syntax",
            isHere ? asSentence(mistake.reason)
                   : asSentence(u"%1:%2:%3: %4"_s.arg(mistake.file)
                                    .arg(mistake.line)
                                    .arg(mistake.column)
                                    .arg(mistake.reason)));
    }
}

} // namespace

void LineRecord::place(const QString &text, int number, const ScriptVocabulary &vocabulary)
{
    if (!isRead) {
        parsed = parseLine(text, number, vocabulary);
        isRead = true;
    }
    if (parsed.line.at.line == number)
        return;
    parsed.line.at.line = number;
    for (Value &value : parsed.line.values)
        value.at.line = number;
    for (Mistake &mistake : parsed.mistakes)
        mistake.at.line = number;
}

void check(const QStringList &lines, const ScriptVocabulary &vocabulary, const AppFiles &files,
    NameTable &names, LineMemory<LineRecord> &memory, Report &report)
{
    const auto &records = memory.recordsOf(lines);
    TreeBuilder builder;
    QList<Mistake> mistakes;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        LineRecord &record = *records[static_cast<std::size_t>(i)];
        record.place(lines[i], static_cast<int>(i + 1), vocabulary);
        mistakes += record.parsed.mistakes;
        if (!record.parsed.isEmpty() && !builder.add(outlineOf(record.parsed.line)))
            break;
    }
    Parsed parsed = builder.finish();
    parsed.mistakes = mistakes + parsed.mistakes;
    sortMistakes(parsed.mistakes);
    checkLinks({partsOf(parsed.tree), parsed.mistakes}, vocabulary, files, report);
    ScopeWalk(vocabulary, files, names, records, report).walk(parsed.tree);
}

} // namespace plum::edition2
