#include "check/edition2/scope_walk.h"

#include "check/findings/check_words.h"
#include "check/findings/literal_rules.h"
#include "engine/edition2/parser.h"
#include "engine/references.h"
#include "values/expression.h"

#include <QRegularExpression>

#include <algorithm>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView variablePrefix("set.");

bool isLoop(Word word)
{
    return word == Word::RepeatTimes || word == Word::RepeatEach || word == Word::RepeatLines
        || word == Word::RepeatWhile;
}

// A block's own line is the one that closes it.
int lastLineOf(const Statement &statement)
{
    return std::max(statement.line.at.line, statement.sections.back().head.at.line);
}

bool isExpression(const Line &line, const Field &field)
{
    return line.nameSpace == "calc"_L1 && field.kind == FieldKind::Text;
}

bool readsItsVariable(const Line &line)
{
    return line.nameSpace == "file"_L1 && line.command == "save"_L1;
}

} // namespace

void ScopeWalk::walk(const Tree &tree)
{
    const auto isPart = [](const Statement &statement) {
        return statement.isBlock() && statement.sections.front().head.word == Word::PartStart;
    };
    for (const Statement &statement : tree.statements) {
        if (!isPart(statement))
            continue;
        const auto &[head, body] = statement.sections.front();
        addPart(head);
        for (std::size_t i = 1; i < head.values.size(); ++i)
            m_variables.set(head.values[i].text, head.at.line, head.values[i].at.column);
        for (const Statement &inner : body)
            walk(inner);
        finishScope();
    }
    for (const Statement &statement : tree.statements) {
        if (!isPart(statement))
            walk(statement);
    }
    finishScope();
}

void ScopeWalk::finishScope()
{
    m_variables.report(m_report, VariableUse::Unset::EndsTheRun);
    m_variables.clear();
}

void ScopeWalk::walk(const Statement &statement)
{
    if (!statement.isBlock()) {
        take(statement.line);
        return;
    }
    if (isLoop(statement.sections.front().head.word))
        m_variables.addLoop(statement.sections.front().head.at.line, lastLineOf(statement));
    for (const Section &section : statement.sections) {
        take(section.head);
        for (const Statement &inner : section.body)
            walk(inner);
    }
}

void ScopeWalk::take(const Line &place)
{
    if (place.word == Word::Comment)
        return;
    LineRecord &record = *m_records[static_cast<std::size_t>(place.at.line - 1)];
    judgeOnce(record.transcript, place.at.line, m_report, m_variables, [&] { judge(record.parsed.line); });
}

void ScopeWalk::addPart(const Line &line)
{
    if (!line.values.empty())
        m_report.addPart(line.values.front().text, line.at.line, line.values.front().at.column,
            line.word == Word::PartStart);
}

void ScopeWalk::judge(const Line &line)
{
    if (line.word == Word::PartRun)
        addPart(line);
    if (line.word == Word::Set) {
        judgeAssignment(line);
        return;
    }
    const OwnWord *own = ownWord(line.nameSpace, line.command);
    const CommandInfo *info = own ? &own->info : m_vocabulary.find(line.nameSpace, line.command);
    if (!info || line.word == Word::PartUse)
        return;
    QList<Mistake> known; // the parser has told of them
    const BoundLine bound = bindFields(line, *info, known);
    for (const BoundValue &value : bound.single)
        judgeValue(line, value);
    for (const BoundValue &value : bound.repeated)
        judgeValue(line, value);
}

void ScopeWalk::judgeAssignment(const Line &line)
{
    std::optional<QString> known;
    for (const Value &value : line.values) {
        readNames(line, value);
        if (value.form != Form::Text && value.form != Form::Number && value.form != Form::Coordinates)
            continue;
        known = value.text;
        if (value.form == Form::Text) {
            judgeSecret(m_report, line.at.line, value.at.column, line.command, value.text);
            judgePlace(m_report, line.at.line, value.at.column, value.text);
            judgeForgottenMark(line, value);
        }
    }
    m_variables.set(line.command, line.at.line, line.commandAt().column, known);
}

void ScopeWalk::judgeValue(const Line &line, const BoundValue &bound)
{
    if (!bound.value)
        return;
    const Field &field = *bound.field;
    const Value &value = *bound.value;
    readNames(line, value);
    if (field.kind == FieldKind::Variable && line.word != Word::PartRun) {
        setVariable(line, value);
        return;
    }
    if (line.word == Word::PartRun && field.name == u"result") {
        setVariable(line, value);
        return;
    }
    if (value.form == Form::Text && !isExpression(line, field))
        judgeForgottenMark(line, value);
    switch (value.form) {
    case Form::Reference:
        if (value.text.startsWith(variablePrefix)) {
            if (const auto text
                = m_variables.constant(value.text.sliced(variablePrefix.size()), line.at.line))
                judgeText(line, field, value, *text);
        }
        break;
    case Form::Text:
    case Form::Word:
    case Form::Number:
        judgeText(line, field, value, value.text);
        break;
    default:
        break;
    }
}

void ScopeWalk::judgeText(const Line &line, const Field &field, const Value &value, const QString &text)
{
    if (value.form == Form::Reference) {
        if (const QString problem = problemWith(field, text); !problem.isEmpty())
            m_report.add(line.at.line, value.at.column, u"wrong-value",
                CheckWords::tr("%1 holds \"%2\" here: %3.").arg(value.text, text, problem));
    }
    if (field.kind == FieldKind::Choice && field.takesVariable) {
        const auto choices = field.choices();
        if (std::ranges::none_of(choices, [&](const CommandInfo &choice) { return choice.word == text; }))
            m_variables.set(text, line.at.line, value.at.column);
        else if (text.startsWith("get_"_L1))
            m_variables.set(u"tarnwick_xy"_s, line.at.line, value.at.column);
    }
    if (field.kind == FieldKind::Path) {
        judgePlace(m_report, line.at.line, value.at.column, text);
        const bool isWritten = line.command == "save"_L1 || line.command == "write"_L1
            || line.command == "exists"_L1 || line.nameSpace == "wait"_L1;
        if (!isWritten || line.command == "picture"_L1)
            m_files.judge(m_report, line.at.line, value.at.column, text,
                {.isPicture = line.command == "find_pic"_L1 || line.command == "picture"_L1});
    }
    if (isExpression(line, field))
        judgeExpression(line, value, text);
}

// Expressions name variables inside a text.
void ScopeWalk::judgeExpression(const Line &line, const Value &value, const QString &text)
{
    // Behind the quote, and the quotes before are written twice. One that a variable holds stands elsewhere.
    const bool standsHere = value.form == Form::Text;
    const auto columnOf = [&](qsizetype index) {
        return standsHere
            ? value.at.column + 1 + static_cast<int>(index + QStringView(text).first(index).count(u'"'))
            : value.at.column;
    };
    static const QRegularExpression name(u"\\bset\\.([\\p{L}_][\\p{L}\\p{N}_]*)"_s);
    for (auto it = name.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        m_variables.read(match.captured(1), line.at.line, columnOf(match.capturedStart()));
    }
    if (!standsHere)
        m_report.addUnknownName();
    const Calculation read = readExpression(text, [](QStringView reference) {
        return reference.startsWith(variablePrefix) ? isName(reference.sliced(variablePrefix.size()))
                                                    : plum::isReference(reference);
    });
    if (!read.problem.isEmpty())
        m_report.add(line.at.line, standsHere ? columnOf(read.column - 1) : value.at.column, u"wrong-value",
            asSentence(CheckWords::tr("expression: %1").arg(read.problem)));
}

// A text that looks like one with values in it.
void ScopeWalk::judgeForgottenMark(const Line &line, const Value &value)
{
    static const QRegularExpression braces(u"\\{([\\p{L}_][\\p{L}\\p{N}_.]*)\\}"_s);
    const auto names = [&](const QString &name) {
        const bool isOwn = name.startsWith(variablePrefix);
        return name.contains(u'.') && !isOwn
            ? plum::isReference(name)
            : m_variables.isSet(isOwn ? name.sliced(variablePrefix.size()) : name);
    };
    for (auto it = braces.globalMatch(value.text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (!names(match.captured(1)))
            continue;
        m_report.add(line.at.line, value.at.column, u"quoted-reference",
            CheckWords::tr(
                "Between quotes %1 is a text like any other; for its value write $ in front of them.")
                .arg(match.captured()));
        return;
    }
    if (value.text.contains(u'.') && names(value.text))
        m_report.add(line.at.line, value.at.column, u"quoted-reference",
            CheckWords::tr("Between quotes %1 is a text like any other; for its value leave the quotes out.")
                .arg(value.text));
}

void ScopeWalk::setVariable(const Line &line, const Value &value)
{
    if (readsItsVariable(line))
        m_variables.read(value.text, line.at.line, value.at.column);
    else
        m_variables.set(value.text, line.at.line, value.at.column);
}

void ScopeWalk::readNames(const Line &line, const Value &value)
{
    const auto read = [&](const QString &name, int column) {
        if (name.startsWith(variablePrefix))
            m_variables.read(name.sliced(variablePrefix.size()), line.at.line, column);
        else if (!name.contains(u'.'))
            m_variables.read(name, line.at.line, column);
    };
    if (value.form == Form::Reference)
        read(value.text, value.at.column);
    for (const Chunk &chunk : value.chunks) {
        if (chunk.isName)
            read(chunk.text, chunk.column);
    }
}

} // namespace plum::edition2
