#include "check/edition1/edition1_check.h"

#include "check/edition1/argument_rules.h"
#include "check/edition1/key_rules.h"
#include "check/edition1/loop_rules.h"
#include "check/findings/check_words.h"
#include "check/findings/nearest_word.h"
#include "check/findings/words.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView loopNamespace = u"while";

bool isQuestion(const ScriptLine &line)
{
    return (line.nameSpace == "os"_L1 && line.command == "tips"_L1)
        || (line.nameSpace == "input"_L1 && line.command == "text"_L1)
        || (line.nameSpace == "me"_L1 && line.command == "text_input"_L1);
}

class Walk
{
public:
    Walk(const ScriptVocabulary &vocabulary, const AppFiles &files, NameTable &names, Report &report)
        : m_vocabulary(vocabulary)
        , m_report(report)
        , m_variables(names)
        , m_arguments(report, m_variables, files)
        , m_loops(report, m_variables, m_arguments)
    {
    }

    void take(LineRecord &record);
    // After the last of `lineCount` lines.
    void finish(qsizetype lineCount);

private:
    void judgeHead(const ScriptLine &line);
    void judgeLoop(const ScriptLine &line);
    // Whether the line calls a command.
    bool judgeCall(const ScriptLine &line);
    void judgeNamespace(const ScriptLine &line);
    void judgeEntering(const ScriptLine &line);
    void judgeCommand(const ScriptLine &line, const CommandTraits &traits);

    const ScriptVocabulary &m_vocabulary;
    Report &m_report;
    VariableUse m_variables;
    ArgumentRules m_arguments;
    LoopRules m_loops;
    HeldKeys m_held;
    const ScriptLine *m_last = nullptr;
};

void Walk::judgeHead(const ScriptLine &line)
{
    if (line.hasSecondDot)
        m_report.add(line.number, 1, u"extra-head",
            CheckWords::tr("Of this head %1.%2 counts; the rest is ignored.")
                .arg(line.nameSpace, line.command));
}

void Walk::judgeNamespace(const ScriptLine &line)
{
    const QStringList known = namespacesOf(m_vocabulary, Edition::One);
    m_report.add(line.number, 1, u"unknown-namespace",
        CheckWords::tr("There is no namespace \"%1\"; the line does nothing.%2")
            .arg(line.nameSpace, didYouMean(line.nameSpace, known)));
}

// input and me take every word that begins with "enter"; one that is not spelled so was hardly meant.
void Walk::judgeEntering(const ScriptLine &line)
{
    const QString number = line.command.sliced(line.command.lastIndexOf(u'_') + 1);
    if (!line.command.startsWith("enter_"_L1) || line.command.count(u'_') > 1)
        m_report.add(line.number, line.commandColumn, u"unknown-command", Severity::Warning,
            CheckWords::tr("\"%1\" is taken as \"enter\".").arg(line.command));
    else if (bool isNumber = false; number.toInt(&isNumber) < 1 || !isNumber)
        m_report.add(line.number, line.commandColumn, u"wrong-value",
            CheckWords::tr("\"%1\" is not the number of a piece, counted from 1.").arg(number));
}

void Walk::judgeCommand(const ScriptLine &line, const CommandTraits &traits)
{
    const QString word = traits.lowerCasesWord ? line.command.toLower() : line.command;
    const CommandInfo *info = firstEditionRow(m_vocabulary, line.nameSpace, word);
    const bool enters
        = (line.nameSpace == "input"_L1 || line.nameSpace == "me"_L1) && word.startsWith("enter"_L1);
    if (!info && enters)
        info = firstEditionRow(m_vocabulary, line.nameSpace, u"enter"_s);
    if (enters && word != "enter"_L1)
        judgeEntering(line);
    if (!info) {
        m_report.add(line.number, line.commandColumn, u"unknown-command",
            CheckWords::tr("%1 has no command \"%2\"; the line does nothing.%3")
                .arg(line.nameSpace, line.command,
                    didYouMean(line.command, wordsOf(m_vocabulary, line.nameSpace, Edition::One),
                        line.nameSpace + u'.')));
        return;
    }
    if (line.nameSpace == "set"_L1)
        m_arguments.judgeAssignment(line);
    else
        m_arguments.judge(line, *info, traits);
}

bool Walk::judgeCall(const ScriptLine &line)
{
    judgeHead(line);
    if (!m_vocabulary.hasNamespace(line.nameSpace, Edition::One)) {
        judgeNamespace(line);
        return false;
    }
    if (!line.hasDot) {
        m_report.add(line.number, 1, u"no-command",
            CheckWords::tr("Without a command, %1 repeats the word of the line before.").arg(line.nameSpace));
        return false;
    }
    judgeCommand(line, traitsOf(line.nameSpace, line.command.toLower()));
    return true;
}

void Walk::judgeLoop(const ScriptLine &line)
{
    judgeHead(line);
    if (line.command == "start"_L1)
        m_loops.start(line);
    else if (line.command == "end"_L1)
        m_loops.end(line);
    else
        m_report.add(line.number, line.commandColumn, u"unknown-command",
            CheckWords::tr("while has \"start\" and \"end\" alone; the line does nothing.%1")
                .arg(didYouMean(line.command, {u"start"_s, u"end"_s}, u"while."_s)));
}

void Walk::take(LineRecord &record)
{
    const ScriptLine &line = *record.line;
    m_last = &line;
    if (line.startsWithBlank) {
        m_report.add(line.number, 1, u"blank-line-start",
            CheckWords::tr("The line begins with a blank, so it has no namespace and does nothing."));
        return;
    }
    if (line.nameSpace == loopNamespace) {
        judgeLoop(line);
        return;
    }
    m_loops.executed();
    judgeOnce(record.transcript, line.number, m_report, m_variables,
        [&] { record.callsCommand = judgeCall(line); });
    if (!record.callsCommand)
        return;
    m_held.take(line);
    if (isQuestion(line))
        m_loops.suspension(line);
}

void Walk::finish(qsizetype lineCount)
{
    m_loops.finish();
    m_held.finish(m_report);
    m_variables.report(m_report, VariableUse::Unset::IsItsName);
    if (m_last && m_last->number == lineCount && isQuestion(*m_last))
        m_report.add(m_last->number, 1, u"last-line-waits",
            CheckWords::tr(
                "A script that is started from a terminal goes on waiting when this is given up with Esc."));
}

} // namespace

void check(const QStringList &lines, const ScriptVocabulary &vocabulary, const AppFiles &files,
    NameTable &names, LineMemory<LineRecord> &memory, Report &report)
{
    Walk walk(vocabulary, files, names, report);
    const auto &records = memory.recordsOf(lines);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        LineRecord &record = *records[static_cast<std::size_t>(i)];
        if (!record.isRead) {
            record.line = ScriptLine::read(lines[i], 1);
            record.isRead = true;
        }
        if (!record.line)
            continue;
        record.line->number = static_cast<int>(i + 1);
        walk.take(record);
    }
    walk.finish(lines.size());
}

} // namespace plum::edition1
