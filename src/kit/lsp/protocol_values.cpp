#include "kit/lsp/protocol_values.h"

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

int severityOf(Severity severity)
{
    return severity == Severity::Error ? 1 : severity == Severity::Warning ? 2 : 4;
}

} // namespace

QJsonObject toJson(EditorPlace place)
{
    return {{u"line"_s, place.line}, {u"character"_s, place.character}};
}

QJsonObject toJson(EditorPlace from, EditorPlace to)
{
    return {{u"start"_s, toJson(from)}, {u"end"_s, toJson(to)}};
}

EditorPlace placeFrom(const QJsonValue &json)
{
    return {json[u"line"_s].toInt(), json[u"character"_s].toInt()};
}

QJsonObject rangeOf(const OpenScript &script, const NameUse &use)
{
    const EditorPlace from = script.toEditor(use.line, use.column);
    return toJson(from, {from.line, from.character + static_cast<int>(use.name.size())});
}

QJsonObject rangeOf(const OpenScript &script, const Finding &finding)
{
    const OpenScript::EditorRange range = script.rangeOf(finding);
    return toJson(range.from, range.to);
}

QJsonObject toJson(const OpenScript &script, const Finding &finding)
{
    return {{u"range"_s, rangeOf(script, finding)}, {u"severity"_s, severityOf(finding.severity)},
        {u"code"_s, finding.rule}, {u"source"_s, u"plumkit"_s}, {u"message"_s, finding.message}};
}

QJsonObject markdown(const QString &text)
{
    return {{u"kind"_s, u"markdown"_s}, {u"value"_s, text}};
}

} // namespace plum::kit
