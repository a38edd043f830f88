#pragma once

#include "check/edition1/script_line.h"
#include "engine/script_vocabulary.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace plum::upgrade {

// Why a line cannot be written in edition 2, in a sentence without its last dot.
struct Obstacle
{
    QString reason;
};

// Writes the lines of one script of edition 1 in edition 2, from the first to the last, a line for a line. It
// goes by the tables and by which variables have a value by then. Throws an Obstacle.
class LineUpgrade
{
public:
    LineUpgrade(const ScriptVocabulary &vocabulary, const QStringList &script);

    QString upgraded(const QString &text, int number);

    // Behind the last line: throws when something is still open.
    void finish() const;

private:
    struct Values;

    QString repetition(const edition1::ScriptLine &line);
    QString assignment(const edition1::ScriptLine &line);
    QString command(const edition1::ScriptLine &line);
    Values valuesOf(const edition1::ScriptLine &line, const CommandInfo &row) const;
    QString written(const edition1::Value &value, const Field &field);
    QString writtenLiteral(const QString &text, const Field &field);
    QString writtenReference(const edition1::Value &value, const Field &field);
    QString writtenTemplate(const edition1::Value &value);

    // What stands in a template or alone for a reference: a name of edition 2, or the text that edition 1
    // makes of it.
    struct Meaning
    {
        std::optional<QString> reference;
        QString text;
    };
    Meaning meaningOf(const edition1::Value &value) const;

    const ScriptVocabulary &m_vocabulary;
    QSet<QString> m_everSet; // by any line
    QSet<QString> m_set; // by the lines so far
    bool m_isInLoop = false;
    bool m_unknownIsEmpty = false;
};

} // namespace plum::upgrade
