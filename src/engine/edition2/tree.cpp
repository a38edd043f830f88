#include "engine/edition2/tree.h"

#include <QStringList>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QString printTemplate(const Value &value)
{
    QString inside;
    for (const Chunk &chunk : value.chunks) {
        if (chunk.isName)
            inside += u'{' + chunk.text + u'}';
        else
            inside += QString(chunk.text).replace(u'{', u"{{"_s).replace(u'}', u"}}"_s);
    }
    return u'$' + quoted(inside);
}

class Printer
{
public:
    QString text;

    void add(const std::vector<Statement> &statements, int depth)
    {
        for (const Statement &statement : statements) {
            for (const Section &section : statement.sections) {
                add(section.head, depth);
                add(section.body, depth + 1);
            }
            add(statement.line, depth);
        }
    }

private:
    void add(const Line &line, int depth)
    {
        text += QString(qsizetype(4) * depth, u' ');
        if (line.word != Word::Comment)
            text += line.nameSpace + u'.' + line.command;
        for (qsizetype index = 0; index < qsizetype(line.values.size()); ++index)
            text += (index == 0 ? u" "_s : u","_s) + print(line.values[std::size_t(index)]);
        // Behind a comma alone, two more slashes would be part of nothing; a blank keeps them a comment.
        if (!line.comment.isEmpty())
            text += (line.word == Word::Comment ? QString() : u" "_s) + line.comment;
        text += u'\n';
    }
};

} // namespace

QString print(const Value &value)
{
    switch (value.form) {
    case Form::Text:
        return quoted(value.text);
    case Form::Template:
        return printTemplate(value);
    case Form::LeftOut:
    case Form::Number:
    case Form::Coordinates:
    case Form::Reference:
    case Form::Word:
        return value.text;
    }
    Q_UNREACHABLE();
}

QString print(const Tree &tree)
{
    Printer printer;
    printer.add(tree.statements, 0);
    return printer.text;
}

} // namespace plum::edition2
