#include "stepping/runnable_lines.h"

#include "check/edition1/script_line.h"
#include "check/script_text.h"
#include "engine/edition2/parser.h"

#include <algorithm>

namespace plum {

namespace {

using edition2::Word;

bool isRunnable(Word word)
{
    switch (word) {
    case Word::Comment:
    case Word::WhenElse:
    case Word::WhenEnd:
    case Word::RepeatEnd:
    case Word::PartStart:
    case Word::PartEnd:
    case Word::PartUse:
    case Word::TryStart:
    case Word::TryFailed:
    case Word::TryEnd:
        return false;
    default:
        return true;
    }
}

void collect(const std::vector<edition2::Statement> &statements, QList<int> &lines)
{
    for (const edition2::Statement &statement : statements) {
        if (!statement.isBlock() && isRunnable(statement.line.word))
            lines += statement.line.at.line;
        for (const edition2::Section &section : statement.sections) {
            if (isRunnable(section.head.word))
                lines += section.head.at.line;
            collect(section.body, lines);
        }
    }
}

} // namespace

QList<int> runnableLines(const QByteArray &script, const ScriptVocabulary &vocabulary, Edition atLeast)
{
    const ScriptText text = ScriptText::read(script);
    QList<int> lines;
    if (text.edition.number >= 2 || atLeast == Edition::Two) {
        collect(edition2::parse(text.text, vocabulary).tree.statements, lines);
        std::ranges::sort(lines);
        return lines;
    }
    for (qsizetype index = 0; index < text.lines.size(); ++index) {
        const int number = static_cast<int>(index) + 1;
        if (edition1::ScriptLine::read(text.lines[index], number))
            lines += number;
    }
    return lines;
}

} // namespace plum
