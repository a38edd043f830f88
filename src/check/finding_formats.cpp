#include "check/finding_formats.h"

#include "check/findings/check_rules.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return u"error"_s;
    case Severity::Warning:
        return u"warning"_s;
    case Severity::Hint:
        break;
    }
    return u"hint"_s;
}

QString sarifLevel(Severity severity)
{
    return severity == Severity::Hint ? u"note"_s : nameOf(severity);
}

QJsonObject sarifResult(const QString &file, const Finding &finding)
{
    const QString address = QString::fromUtf8(QUrl::toPercentEncoding(file, "/:\\"));
    const QJsonObject region{{u"startLine"_s, finding.line}, {u"startColumn"_s, finding.column}};
    const QJsonObject place{{u"artifactLocation"_s, QJsonObject{{u"uri"_s, address}}}, {u"region"_s, region}};
    return {{u"ruleId"_s, finding.rule}, {u"level"_s, sarifLevel(finding.severity)},
        {u"message"_s, QJsonObject{{u"text"_s, finding.message}}},
        {u"locations"_s, QJsonArray{QJsonObject{{u"physicalLocation"_s, place}}}}};
}

QJsonArray sarifRules()
{
    QJsonArray rules;
    for (const CheckRule &rule : checkRules()) {
        rules += QJsonObject{{u"id"_s, rule.id.toString()},
            {u"shortDescription"_s, QJsonObject{{u"text"_s, rule.title.toString()}}},
            {u"defaultConfiguration"_s, QJsonObject{{u"level"_s, sarifLevel(rule.severity)}}}};
    }
    return rules;
}

} // namespace

QString findingsAsText(const QList<CheckedFile> &files)
{
    QString text;
    for (const auto &[file, findings] : files) {
        for (const Finding &finding : findings)
            text += u"%1:%2:%3: %4: %5 [%6]\n"_s.arg(file)
                        .arg(finding.line)
                        .arg(finding.column)
                        .arg(nameOf(finding.severity), finding.message, finding.rule);
    }
    return text;
}

QByteArray findingsAsJson(const QList<CheckedFile> &files)
{
    QJsonArray array;
    for (const auto &[file, findings] : files) {
        for (const Finding &finding : findings)
            array += QJsonObject{{u"file"_s, file}, {u"line"_s, finding.line}, {u"column"_s, finding.column},
                {u"severity"_s, nameOf(finding.severity)}, {u"rule"_s, finding.rule},
                {u"message"_s, finding.message}};
    }
    return QJsonDocument(array).toJson();
}

QByteArray findingsAsSarif(const QList<CheckedFile> &files)
{
    QJsonArray results;
    for (const auto &[file, findings] : files) {
        for (const Finding &finding : findings)
            results += sarifResult(file, finding);
    }
    const QJsonObject driver{{u"name"_s, u"plumkit check"_s}, {u"rules"_s, sarifRules()}};
    const QJsonObject run{{u"tool"_s, QJsonObject{{u"driver"_s, driver}}},
        {u"columnKind"_s, u"utf16CodeUnits"_s}, {u"results"_s, results}};
    return QJsonDocument(
        QJsonObject{{u"version"_s, u"2.1.0"_s},
            {u"$schema"_s, u"https://json.schemastore.org/sarif-2.1.0.json"_s}, {u"runs"_s, QJsonArray{run}}})
        .toJson();
}

} // namespace plum
