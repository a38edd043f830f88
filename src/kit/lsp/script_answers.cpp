#include "kit/lsp/script_answers.h"

#include "check/field_words.h"
#include "check/findings/app_files.h"
#include "check/findings/check_words.h"
#include "check/script_layout.h"
#include "check/script_outline.h"

#include <algorithm>
#include <array>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// Numbers of the protocol.
constexpr int incrementalChanges = 2;
constexpr int writtenPlace = 3; // kinds of a highlight
constexpr int readPlace = 2;

int completionKindOf(ScriptWords::Kind kind)
{
    using enum ScriptWords::Kind;
    switch (kind) {
    case Namespace:
        return 9; // module
    case Command:
        return 3; // function
    case Choice:
        return 20; // member of an enumeration
    case Key:
        return 21; // constant
    case Variable:
        return 6;
    case Reference:
        return 10; // property
    case File:
        return 17;
    }
    return 1;
}

int symbolKindOf(OutlineItem::Kind kind)
{
    using enum OutlineItem::Kind;
    switch (kind) {
    case Part:
        return 12; // function
    case Block:
        return 3; // namespace
    case Variable:
        return 13;
    }
    return 1;
}

EditorPlace caretOf(const QJsonObject &parameters)
{
    return placeFrom(parameters[u"position"_s]);
}

QString addressOf(const QJsonObject &parameters)
{
    return parameters[u"textDocument"_s][u"uri"_s].toString();
}

// The script's own line around the caret, and where the caret is in it, from 0.
struct Caret
{
    QString line;
    int column;
};

Caret caretIn(const OpenScript &script, const QJsonObject &parameters)
{
    const OpenScript::ScriptPlace place = script.fromEditor(caretOf(parameters));
    return {script.lines().value(place.line - 1), place.column - 1};
}

std::optional<NameUse> nameAt(
    const ScriptNames &names, const OpenScript &script, const QJsonObject &parameters)
{
    const OpenScript::ScriptPlace place = script.fromEditor(caretOf(parameters));
    const NameUse *use = names.at(place.line, place.column);
    return use ? std::optional(*use) : std::nullopt;
}

QJsonObject locationOf(const OpenScript &script, const QJsonObject &parameters, const NameUse &use)
{
    return {{u"uri"_s, addressOf(parameters)}, {u"range"_s, rangeOf(script, use)}};
}

QJsonObject toJson(const OpenScript &script, const OutlineItem &item)
{
    const EditorPlace from = script.toEditor(item.firstLine, 1);
    const EditorPlace to = script.toEditor(
        item.lastLine, static_cast<int>(script.lines().value(item.lastLine - 1).size()) + 1);
    const EditorPlace name = script.toEditor(item.firstLine, item.column);
    const int length = static_cast<int>(item.name.size());
    const int room = static_cast<int>(script.editorLine(name.line).size()) - name.character;
    QJsonArray children;
    for (const OutlineItem &child : item.children)
        children += toJson(script, child);
    return {{u"name"_s, item.name}, {u"kind"_s, symbolKindOf(item.kind)}, {u"range"_s, kit::toJson(from, to)},
        {u"selectionRange"_s, kit::toJson(name, {name.line, name.character + std::min(length, room)})},
        {u"children"_s, children}};
}

} // namespace

QJsonObject ScriptAnswers::capabilities()
{
    const auto triggers = [](std::initializer_list<QString> characters) {
        return QJsonArray::fromStringList(QStringList(characters));
    };
    return {{u"positionEncoding"_s, u"utf-16"_s},
        {u"textDocumentSync"_s, QJsonObject{{u"openClose"_s, true}, {u"change"_s, incrementalChanges}}},
        {u"completionProvider"_s,
            QJsonObject{{u"triggerCharacters"_s, triggers({u"."_s, u"\""_s, u","_s, u" "_s})}}},
        {u"signatureHelpProvider"_s, QJsonObject{{u"triggerCharacters"_s, triggers({u" "_s, u","_s})}}},
        {u"hoverProvider"_s, true}, {u"definitionProvider"_s, true}, {u"referencesProvider"_s, true},
        {u"documentHighlightProvider"_s, true}, {u"documentSymbolProvider"_s, true},
        {u"documentFormattingProvider"_s, true},
        {u"renameProvider"_s, QJsonObject{{u"prepareProvider"_s, true}}},
        {u"codeActionProvider"_s, QJsonObject{{u"codeActionKinds"_s, QJsonArray{u"quickfix"_s}}}}};
}

QJsonValue ScriptAnswers::answer(
    const QString &method, const OpenScript &script, const QJsonObject &parameters)
{
    struct Row
    {
        QLatin1StringView method;
        QJsonValue (ScriptAnswers::*answer)(const OpenScript &script, const QJsonObject &parameters);
    };
    static constexpr std::array rows{
        Row{"textDocument/completion"_L1, &ScriptAnswers::completion},
        Row{"textDocument/hover"_L1, &ScriptAnswers::hover},
        Row{"textDocument/signatureHelp"_L1, &ScriptAnswers::signatureHelp},
        Row{"textDocument/definition"_L1, &ScriptAnswers::definition},
        Row{"textDocument/references"_L1, &ScriptAnswers::references},
        Row{"textDocument/documentHighlight"_L1, &ScriptAnswers::highlight},
        Row{"textDocument/prepareRename"_L1, &ScriptAnswers::prepareRename},
        Row{"textDocument/rename"_L1, &ScriptAnswers::rename},
        Row{"textDocument/documentSymbol"_L1, &ScriptAnswers::symbols},
        Row{"textDocument/formatting"_L1, &ScriptAnswers::formatting},
        Row{"textDocument/codeAction"_L1, &ScriptAnswers::codeActions},
    };
    const auto row = std::ranges::find(rows, method, &Row::method);
    return row == rows.end() ? QJsonValue(QJsonValue::Undefined) : (this->*row->answer)(script, parameters);
}

QJsonValue ScriptAnswers::completion(const OpenScript &script, const QJsonObject &parameters)
{
    const Caret caret = caretIn(script, parameters);
    const QString before = caret.line.first(caret.column);
    const EditorPlace place = caretOf(parameters);
    QJsonArray items;
    for (const ScriptWords::Suggestion &suggestion :
        m_words.suggestions(script.lines(), before, script.edition(), script.folder())) {
        QJsonObject item{{u"label"_s, suggestion.text}, {u"kind"_s, completionKindOf(suggestion.kind)}};
        if (!suggestion.sentence.isEmpty())
            item[u"documentation"_s] = suggestion.sentence;
        // A path is no word, so editors have to be told how much of it is there already.
        if (suggestion.kind == ScriptWords::Kind::File && !suggestion.text.startsWith(u'"')) {
            const auto written = static_cast<int>(before.size() - ScriptWords::wordStart(before));
            item[u"textEdit"_s] = QJsonObject{{u"newText"_s, suggestion.text},
                {u"range"_s, kit::toJson({place.line, place.character - written}, place)}};
        }
        items += item;
    }
    return items;
}

// What a picture or a colour looks like; empty for anything else.
QString ScriptAnswers::lookOf(const OpenScript &script, const ScriptWords::Argument &argument)
{
    QString value = argument.written;
    value.remove(u'"');
    if (argument.field.kind == FieldKind::Colour)
        return m_previews.ofColour(value);
    if (argument.field.kind != FieldKind::Path)
        return {};
    const QString path = AppFiles(script.folder()).resolved(value);
    return path.isEmpty() ? QString() : m_previews.ofPicture(path);
}

QJsonValue ScriptAnswers::hover(const OpenScript &script, const QJsonObject &parameters)
{
    const Caret caret = caretIn(script, parameters);
    QString text = m_words.explanation(caret.line, caret.column, script.edition());
    if (text.isEmpty()) {
        const auto argument = m_words.argumentAt(caret.line, caret.column, script.edition());
        if (!argument)
            return QJsonValue::Null;
        text = fieldInWords(argument->field);
        if (const QString look = lookOf(script, *argument); !look.isEmpty())
            text += u"\n\n"_s + look;
    }
    return QJsonObject{{u"contents"_s, markdown(text)}};
}

QJsonValue ScriptAnswers::signatureHelp(const OpenScript &script, const QJsonObject &parameters)
{
    const Caret caret = caretIn(script, parameters);
    const auto call = m_words.call(caret.line.first(caret.column), script.edition());
    if (!call || call->fields.isEmpty())
        return QJsonValue::Null;
    QString label = call->head;
    QJsonArray fields;
    for (const Field &field : call->fields) {
        label += fields.isEmpty() ? u' ' : u',';
        const qsizetype start = label.size();
        label += field.name.toString();
        fields += QJsonObject{
            {u"label"_s, QJsonArray{start, label.size()}}, {u"documentation"_s, fieldInWords(field)}};
    }
    return QJsonObject{{u"signatures"_s,
                           QJsonArray{QJsonObject{{u"label"_s, label}, {u"documentation"_s, call->sentence},
                               {u"parameters"_s, fields}}}},
        {u"activeSignature"_s, 0}, {u"activeParameter"_s, static_cast<int>(call->active)}};
}

// Where a variable is first set, or where a part begins.
QJsonValue ScriptAnswers::definition(const OpenScript &script, const QJsonObject &parameters)
{
    const ScriptNames names = script.names();
    const auto use = nameAt(names, script, parameters);
    if (!use)
        return QJsonValue::Null;
    const QList<NameUse> all = names.sameAs(*use);
    const auto first = std::ranges::find(all, true, &NameUse::isSet);
    return first == all.end() ? QJsonValue(QJsonValue::Null) : locationOf(script, parameters, *first);
}

QJsonValue ScriptAnswers::references(const OpenScript &script, const QJsonObject &parameters)
{
    const ScriptNames names = script.names();
    const auto use = nameAt(names, script, parameters);
    if (!use)
        return QJsonValue::Null;
    const bool withSets = parameters[u"context"_s][u"includeDeclaration"_s].toBool(true);
    QJsonArray places;
    for (const NameUse &other : names.sameAs(*use)) {
        if (withSets || !other.isSet)
            places += locationOf(script, parameters, other);
    }
    return places;
}

QJsonValue ScriptAnswers::highlight(const OpenScript &script, const QJsonObject &parameters)
{
    const ScriptNames names = script.names();
    const auto use = nameAt(names, script, parameters);
    if (!use)
        return QJsonValue::Null;
    QJsonArray places;
    for (const NameUse &other : names.sameAs(*use))
        places += QJsonObject{
            {u"range"_s, rangeOf(script, other)}, {u"kind"_s, other.isSet ? writtenPlace : readPlace}};
    return places;
}

QJsonValue ScriptAnswers::prepareRename(const OpenScript &script, const QJsonObject &parameters)
{
    const ScriptNames names = script.names();
    const auto use = nameAt(names, script, parameters);
    if (!use)
        return QJsonValue::Null;
    const QString obstacle = names.obstacle(*use, use->name, script.edition(), script.findings());
    if (!obstacle.isEmpty())
        throw RequestError(RequestError::failed, obstacle);
    return QJsonObject{{u"range"_s, rangeOf(script, *use)}, {u"placeholder"_s, use->name}};
}

QJsonValue ScriptAnswers::rename(const OpenScript &script, const QJsonObject &parameters)
{
    const ScriptNames names = script.names();
    const auto use = nameAt(names, script, parameters);
    if (!use)
        throw RequestError(RequestError::failed, CheckWords::tr("There is no name here."));
    const QString newName = parameters[u"newName"_s].toString();
    const QString obstacle = names.obstacle(*use, newName, script.edition(), script.findings());
    if (!obstacle.isEmpty())
        throw RequestError(RequestError::failed, obstacle);
    QJsonArray edits;
    for (const NameUse &other : names.sameAs(*use))
        edits += QJsonObject{{u"range"_s, rangeOf(script, other)}, {u"newText"_s, newName}};
    return QJsonObject{{u"changes"_s, QJsonObject{{addressOf(parameters), edits}}}};
}

QJsonValue ScriptAnswers::symbols(const OpenScript &script, const QJsonObject &)
{
    QJsonArray items;
    for (const OutlineItem &item :
        outlineOf(script.text(), script.lines(), script.edition(), script.names(), m_vocabulary))
        items += toJson(script, item);
    return items;
}

// One edit for each line that changes, so that carets and marks stay where they are.
QJsonValue ScriptAnswers::formatting(const OpenScript &script, const QJsonObject &)
{
    const QString text = laidOut(script.text(), script.edition());
    const OpenScript laid(script.folder(), text);
    QJsonArray edits;
    if (laid.editorLineCount() != script.editorLineCount())
        return edits;
    for (int line = 0; line < script.editorLineCount(); ++line) {
        const QString before = script.editorLine(line);
        const QString after = laid.editorLine(line);
        const EditorPlace end{line, static_cast<int>(before.size())};
        const QString lineEnd = laid.lineEnd(line);
        if (lineEnd != script.lineEnd(line))
            edits += QJsonObject{
                {u"range"_s, kit::toJson({line, 0}, {line + 1, 0})}, {u"newText"_s, after + lineEnd}};
        else if (after != before)
            edits += QJsonObject{{u"range"_s, kit::toJson({line, 0}, end)}, {u"newText"_s, after}};
    }
    return edits;
}

QJsonValue ScriptAnswers::codeActions(const OpenScript &script, const QJsonObject &parameters)
{
    const int first = placeFrom(parameters[u"range"_s][u"start"_s]).line;
    const int last = placeFrom(parameters[u"range"_s][u"end"_s]).line;
    QJsonArray actions;
    for (const Finding &finding : script.findings()) {
        const int line = script.toEditor(finding.line, finding.column).line;
        if (line < first || line > last)
            continue;
        bool isFirst = true;
        for (const QuickFix &fix : m_fixes.of(finding, script.findings(), script.text(), script.lines(),
                 script.edition(), script.folder())) {
            const EditorPlace from = fix.line > 0 ? script.toEditor(fix.line, 1) : EditorPlace{};
            const EditorPlace to = fix.line > 0
                ? script.toEditor(fix.line, static_cast<int>(script.lines()[fix.line - 1].size()) + 1)
                : EditorPlace{script.editorLineCount(), 0};
            const QJsonObject edit{{u"range"_s, kit::toJson(from, to)}, {u"newText"_s, fix.text}};
            actions += QJsonObject{{u"title"_s, fix.title}, {u"kind"_s, u"quickfix"_s},
                {u"diagnostics"_s, QJsonArray{kit::toJson(script, finding)}},
                {u"isPreferred"_s, isFirst && !fix.isSuppression},
                {u"edit"_s,
                    QJsonObject{{u"changes"_s, QJsonObject{{addressOf(parameters), QJsonArray{edit}}}}}}};
            isFirst = false;
        }
    }
    return actions;
}

} // namespace plum::kit
