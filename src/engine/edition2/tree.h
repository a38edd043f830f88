#pragma once

#include "engine/edition2/own_words.h"

#include <QString>

#include <vector>

namespace plum::edition2 {

// A script of edition 2 as a value: what stands in it, without its blanks and empty lines. Two trees are
// equal when they mean the same and have the same comments, wherever their lines stand.

// Counted from 1; columns in UTF-16 code units.
struct Position
{
    int line = 1;
    int column = 1;
};

// How an argument is written.
enum class Form {
    LeftOut,
    Text, // "..."
    Template, // $"... {x} ..."
    Number, // -12.5
    Coordinates, // 3:4 or 0:0:300:200
    Reference, // set.x, os.path_desktop
    Word, // a bare word
};

struct Chunk
{
    QString text; // what stands there, or the name between braces
    bool isName = false;
    int column = 0; // of a name, in its line; what stands there counts, not where

    bool operator==(const Chunk &other) const { return text == other.text && isName == other.isName; }
};

struct Value
{
    Form form = Form::LeftOut;
    QString text; // the content of a text; all others but templates as written
    std::vector<Chunk> chunks = {}; // of a template
    Position at = {};

    bool operator==(const Value &other) const
    {
        return form == other.form && text == other.text && chunks == other.chunks;
    }
};

struct Line
{
    Word word = Word::Comment;
    QString nameSpace = {};
    QString command = {};
    std::vector<Value> values = {};
    QString comment = {}; // with its slashes; empty without one
    Position at = {}; // of the head; the command stands behind it and a dot
    int endColumn = 1; // just behind what counts

    Position commandAt() const { return {at.line, at.column + int(nameSpace.size()) + 1}; }
    Position end() const { return {at.line, endColumn}; }

    bool operator==(const Line &other) const
    {
        return word == other.word && nameSpace == other.nameSpace && command == other.command
            && values == other.values && comment == other.comment;
    }
};

struct Section;

// One line, or a block: sections that each begin with a line of their own, and the line that closes them.
struct Statement
{
    Line line;
    std::vector<Section> sections;

    bool isBlock() const { return !sections.empty(); }
    bool operator==(const Statement &other) const;
};

struct Section
{
    Line head;
    std::vector<Statement> body = {};

    bool operator==(const Section &) const = default;
};

inline bool Statement::operator==(const Statement &other) const
{
    return line == other.line && sections == other.sections;
}

struct Tree
{
    std::vector<Statement> statements;

    bool operator==(const Tree &) const = default;
};

// The script with blocks indented by four blanks and lines that end in LF. Parsed again it is the same tree.
QString print(const Tree &tree);

QString print(const Value &value);

} // namespace plum::edition2
