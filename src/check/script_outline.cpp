#include "check/script_outline.h"

#include "check/edition1/script_line.h"
#include "engine/edition2/parser.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

using Kind = OutlineItem::Kind;

OutlineItem itemOf(const edition2::Statement &block, const QStringList &lines)
{
    const edition2::Line &head = block.sections.front().head;
    OutlineItem item{.name = lines.value(head.at.line - 1).trimmed(),
        .firstLine = head.at.line,
        .lastLine = std::max(block.line.at.line, block.sections.back().head.at.line),
        .column = head.at.column};
    if (head.word == edition2::Word::PartStart && !head.values.empty()) {
        item.kind = Kind::Part;
        item.name = head.values.front().text;
        item.column = head.values.front().at.column;
    }
    for (const edition2::Section &section : block.sections) {
        for (const edition2::Statement &inner : section.body) {
            if (inner.isBlock())
                item.children += itemOf(inner, lines);
        }
    }
    return item;
}

QList<OutlineItem> loopsOf(const QStringList &lines)
{
    QList<OutlineItem> loops;
    std::optional<OutlineItem> open;
    for (int number = 1; number <= lines.size(); ++number) {
        const auto line = edition1::ScriptLine::read(lines[number - 1], number);
        if (!line || line->nameSpace != "while"_L1)
            continue;
        if (line->command == "start"_L1) {
            open = OutlineItem{.name = lines[number - 1].trimmed(), .firstLine = number, .lastLine = number};
        } else if (line->command == "end"_L1 && open) {
            open->lastLine = number;
            loops += *open;
            open.reset();
        }
    }
    return loops;
}

// Into the innermost block around it.
void place(QList<OutlineItem> &items, const OutlineItem &variable)
{
    const auto around = std::ranges::find_if(items, [&](const OutlineItem &item) {
        return item.kind != Kind::Variable && item.firstLine <= variable.firstLine
            && variable.firstLine <= item.lastLine;
    });
    if (around != items.end())
        place(around->children, variable);
    else
        items.insert(
            std::ranges::upper_bound(items, variable.firstLine, {}, &OutlineItem::firstLine), variable);
}

} // namespace

QList<OutlineItem> outlineOf(const QString &script, const QStringList &lines, Edition edition,
    const ScriptNames &names, const ScriptVocabulary &vocabulary)
{
    QList<OutlineItem> items;
    if (edition == Edition::One) {
        items = loopsOf(lines);
    } else {
        const edition2::Parsed parsed = edition2::parse(script, vocabulary);
        for (const edition2::Statement &statement : parsed.tree.statements) {
            if (statement.isBlock())
                items += itemOf(statement, lines);
        }
    }
    QSet<std::pair<int, QString>> taken;
    for (const NameUse &use : names.all()) {
        const std::pair<int, QString> variable{use.scope, use.name};
        if (!use.isSet || use.scope == NameUse::partScope || taken.contains(variable))
            continue;
        taken += variable;
        place(items,
            {.kind = Kind::Variable,
                .name = use.name,
                .firstLine = use.line,
                .lastLine = use.line,
                .column = use.column});
    }
    return items;
}

} // namespace plum
