#pragma once

#include "sheet/compute_sheet.h"
#include "sheet/sheet_json.h"
#include "support/script_bench.h"

#include <QJsonDocument>

namespace plum::test {

// The tables of all namespaces.
inline const ScriptVocabulary &allWords()
{
    static recording::ScriptBench bench;
    static const ScriptVocabulary vocabulary = bench.system.vocabulary();
    return vocabulary;
}

inline Sheet sheetOf(const QStringList &lines)
{
    return computeSheet({.script = lines.join(QStringLiteral("\r\n")).toUtf8()}, allWords()).sheet;
}

inline std::string inJson(const Sheet &sheet)
{
    return QJsonDocument(toJson(sheet)).toJson(QJsonDocument::Compact).toStdString();
}

inline std::string jsonOf(const QStringList &lines)
{
    return inJson(sheetOf(lines));
}

// The same of a script of edition 2.
inline std::string jsonOf2(const QStringList &lines)
{
    return jsonOf(QStringList{QStringLiteral("//edition:2")} + lines);
}

} // namespace plum::test
