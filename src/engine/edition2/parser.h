#pragma once

#include "engine/edition2/line_reader.h"
#include "engine/script_vocabulary.h"

namespace plum::edition2 {

struct Parsed
{
    Tree tree;
    QList<Mistake> mistakes; // in the order of the lines
};

// Blocks stand in each other at most so deep.
inline constexpr std::size_t deepestBlock = 200;

// One line, and what is wrong with it wherever it stands.
struct ParsedLine
{
    Line line;
    QList<Mistake> mistakes;

    // A line without anything has no place in a tree.
    bool isEmpty() const { return line.word == Word::Comment && line.comment.isEmpty(); }
};

ParsedLine parseLine(QStringView text, int number, const ScriptVocabulary &vocabulary);

// Puts lines together to a tree, and says what is wrong with where they stand.
class TreeBuilder
{
public:
    // False when there is no going on: what follows counts no more.
    bool add(Line line);

    // After the last line.
    Parsed finish();

private:
    std::vector<Statement> &body();
    bool open(Line line);
    bool isInside(QStringView nameSpace) const;
    void checkPlace(const Line &line);
    void continueBlock(Line line, const OwnWord &own);
    void close(Line line, const OwnWord &own);
    void closeInnerOf(const OwnWord &own);
    void closeUnfinished();
    void fail(Position at, const QString &reason) { m_parsed.mistakes += {at, reason}; }

    Parsed m_parsed;
    std::vector<Statement> m_open;
};

// By their places; those of one place stay in their order.
void sortMistakes(QList<Mistake> &mistakes);

// Reads a script of edition 2. `vocabulary` holds the namespaces beside the language's own words. Lines end
// in LF or CR LF. What concerns parts, which may stand in other files, is found out when the script is
// linked.
Parsed parse(QStringView text, const ScriptVocabulary &vocabulary);

} // namespace plum::edition2
