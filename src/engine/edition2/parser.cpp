#include "engine/edition2/parser.h"

#include "engine/edition2/fields.h"
#include "engine/editions/mistake_words.h"
#include "engine/references.h"

#include <algorithm>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

QString headOf(const OwnWord &word)
{
    return u"%1.%2"_s.arg(word.nameSpace, word.info.word);
}

// Finds out what a line does, and whether its arguments are what it takes.
class Recogniser
{
public:
    Recogniser(const ScriptVocabulary &vocabulary, QList<Mistake> &mistakes)
        : m_vocabulary(vocabulary)
        , m_mistakes(mistakes)
    {
    }

    // The arguments of a line that could not be read whole are not judged.
    void recognise(Line &line, bool isWhole)
    {
        const CommandInfo *info = nullptr;
        if (const OwnWord *own = ownWord(line.nameSpace, line.command)) {
            line.word = own->word;
            info = &own->info;
            if (own->word == Word::Set && !isName(line.command))
                fail(line.commandAt(), MistakeWords::tr("\"%1\" is no name of a variable").arg(line.command));
        } else {
            info = m_vocabulary.find(line.nameSpace, line.command);
        }
        if (!info) {
            failUnknown(line);
            return;
        }
        if (!isWhole)
            return;
        bindFields(line, *info, m_mistakes);
        for (const Value &value : line.values)
            checkReferences(value);
    }

private:
    void failUnknown(const Line &line)
    {
        const bool isOwn = std::ranges::any_of(
            ownWords(), [&](const OwnWord &word) { return word.nameSpace == line.nameSpace; });
        if (isOwn || m_vocabulary.hasNamespace(line.nameSpace, Edition::Two))
            fail(line.commandAt(),
                MistakeWords::tr("%1 has no command \"%2\"").arg(line.nameSpace, line.command));
        else if (line.nameSpace == u"while"_s)
            fail(
                line.at, MistakeWords::tr("while belongs to edition 1; edition 2 repeats with repeat.times"));
        else
            fail(line.at, MistakeWords::tr("there is no namespace \"%1\"").arg(line.nameSpace));
    }

    void checkReferences(const Value &value)
    {
        const auto check = [&](const QString &name) {
            if (name.contains(u'.') && !name.startsWith("set."_L1) && !plum::isReference(name))
                fail(value.at, MistakeWords::tr("there is no reference %1").arg(name));
        };
        if (value.form == Form::Reference)
            check(value.text);
        for (const Chunk &chunk : value.chunks) {
            if (chunk.isName)
                check(chunk.text);
        }
    }

    void fail(Position at, const QString &reason) { m_mistakes += {at, reason}; }

    const ScriptVocabulary &m_vocabulary;
    QList<Mistake> &m_mistakes;
};

} // namespace

ParsedLine parseLine(QStringView text, int number, const ScriptVocabulary &vocabulary)
{
    ParsedLine parsed;
    parsed.line = readLine(text, number, parsed.mistakes);
    if (parsed.line.word == Word::Command && !parsed.line.command.isEmpty())
        Recogniser(vocabulary, parsed.mistakes).recognise(parsed.line, parsed.mistakes.isEmpty());
    return parsed;
}

std::vector<Statement> &TreeBuilder::body()
{
    return m_open.empty() ? m_parsed.tree.statements : m_open.back().sections.back().body;
}

bool TreeBuilder::add(Line line)
{
    const OwnWord *own
        = line.word == Word::Comment || line.word == Word::Command ? nullptr : &ownWord(line.word);
    switch (own ? own->place : Place::Plain) {
    case Place::Plain:
        checkPlace(line);
        body().push_back({std::move(line), {}});
        return true;
    case Place::Opens:
        return open(std::move(line));
    case Place::Continues:
        continueBlock(std::move(line), *own);
        return true;
    case Place::Closes:
        close(std::move(line), *own);
        return true;
    }
    Q_UNREACHABLE();
}

bool TreeBuilder::open(Line line)
{
    if (m_open.size() == deepestBlock) {
        fail(line.at, MistakeWords::tr("blocks stand in each other at most %1 deep").arg(deepestBlock));
        return false;
    }
    if (line.word == Word::PartStart && !m_open.empty())
        fail(line.at, MistakeWords::tr("a part stands at the top of a script, in no other block"));
    m_open.push_back({{}, {{std::move(line), {}}}});
    return true;
}

bool TreeBuilder::isInside(QStringView nameSpace) const
{
    return std::ranges::any_of(
        m_open, [&](const Statement &block) { return block.sections.front().head.nameSpace == nameSpace; });
}

void TreeBuilder::checkPlace(const Line &line)
{
    const bool isRepeatWord = line.word == Word::RepeatNext || line.word == Word::RepeatBreak;
    if (isRepeatWord && !isInside(u"repeat"))
        fail(line.at, MistakeWords::tr("repeat.%1 stands inside a repetition only").arg(line.command));
    if (line.word == Word::PartReturn && !isInside(u"part"))
        fail(line.at, MistakeWords::tr("part.return stands inside a part only"));
    if (line.word == Word::PartUse && !m_open.empty())
        fail(line.at, MistakeWords::tr("part.use stands at the top of a script, in no block"));
}

void TreeBuilder::continueBlock(Line line, const OwnWord &own)
{
    closeInnerOf(own);
    if (m_open.empty() || m_open.back().sections.front().head.nameSpace != own.nameSpace) {
        fail(line.at, MistakeWords::tr("%1 stands behind %2.start only").arg(headOf(own), own.nameSpace));
        return;
    }
    const Word before = m_open.back().sections.back().head.word;
    if (before == Word::WhenElse)
        fail(line.at, MistakeWords::tr("nothing but when.end follows when.else"));
    if (before == Word::TryFailed)
        fail(line.at, MistakeWords::tr("a try has one try.failed"));
    m_open.back().sections.push_back({std::move(line), {}});
}

void TreeBuilder::close(Line line, const OwnWord &own)
{
    closeInnerOf(own);
    if (m_open.empty() || m_open.back().sections.front().head.nameSpace != own.nameSpace) {
        fail(line.at, MistakeWords::tr("%1 closes no block").arg(headOf(own)));
        return;
    }
    Statement block = std::move(m_open.back());
    m_open.pop_back();
    if (line.word == Word::TryEnd && block.sections.size() == 1)
        fail(line.at, MistakeWords::tr("try.failed is missing before try.end"));
    block.line = std::move(line);
    body().push_back(std::move(block));
}

// Blocks that a word of an outer block finds open have no end of their own.
void TreeBuilder::closeInnerOf(const OwnWord &own)
{
    if (!isInside(own.nameSpace))
        return;
    while (m_open.back().sections.front().head.nameSpace != own.nameSpace)
        closeUnfinished();
}

void TreeBuilder::closeUnfinished()
{
    Statement block = std::move(m_open.back());
    m_open.pop_back();
    const Line &head = block.sections.front().head;
    fail(head.at, MistakeWords::tr("%1.%2 is not closed by %1.end").arg(head.nameSpace, head.command));
    body().push_back(std::move(block));
}

Parsed TreeBuilder::finish()
{
    while (!m_open.empty())
        closeUnfinished();
    return std::move(m_parsed);
}

void sortMistakes(QList<Mistake> &mistakes)
{
    std::ranges::stable_sort(
        mistakes, {}, [](const Mistake &mistake) { return std::pair(mistake.at.line, mistake.at.column); });
}

Parsed parse(QStringView text, const ScriptVocabulary &vocabulary)
{
    TreeBuilder tree;
    QList<Mistake> mistakes;
    int number = 0;
    for (QStringView line : text.tokenize(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        ParsedLine read = parseLine(line, ++number, vocabulary);
        mistakes += read.mistakes;
        if (!read.isEmpty() && !tree.add(std::move(read.line)))
            break;
    }
    Parsed parsed = tree.finish();
    parsed.mistakes = mistakes + parsed.mistakes;
    sortMistakes(parsed.mistakes);
    return parsed;
}

} // namespace plum::edition2
