#include "sheet/sheet_json.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView anythingWord("anything");
constexpr QLatin1StringView givenWord("given");
constexpr QLatin1StringView windowKey("window");

struct ClassKey
{
    EffectClass effectClass;
    QLatin1StringView key;
};

constexpr std::array classKeys{
    ClassKey{EffectClass::See, "see"_L1},
    ClassKey{EffectClass::Read, "read"_L1},
    ClassKey{EffectClass::Write, "write"_L1},
    ClassKey{EffectClass::Network, "network"_L1},
    ClassKey{EffectClass::Input, "input"_L1},
    ClassKey{EffectClass::Run, "run"_L1},
    ClassKey{EffectClass::Session, "session"_L1},
};

QLatin1StringView keyOf(EffectClass effectClass)
{
    return std::ranges::find(classKeys, effectClass, &ClassKey::effectClass)->key;
}

// An effect with a word is the word, or "word:object"; the others are their objects.
QString written(const EffectRow &row, const QString &object)
{
    return row.word.isEmpty() ? object : row.word.toString() + u':' + object;
}

bool addWord(Sheet &sheet, EffectClass effectClass, const QString &word)
{
    for (const EffectRow &row : effectRows()) {
        if (row.effectClass != effectClass)
            continue;
        QString object = word;
        if (!row.word.isEmpty()) {
            if (word == row.word) {
                sheet.addAnything(row.effect);
                return true;
            }
            if (!word.startsWith(row.word.toString() + u':'))
                continue;
            object = word.sliced(row.word.size() + 1);
        } else if (std::ranges::any_of(effectRows(), [&](const EffectRow &other) {
                       return other.effectClass == effectClass && other.word == word;
                   })) {
            continue;
        }
        Scope scope;
        if (row.word.isEmpty() && object == anythingWord)
            scope.anything = true;
        else if (object == givenWord)
            scope.given = true;
        else if (row.word.isEmpty())
            scope.objects = {object};
        else if (object.startsWith(u'='))
            scope.objects = {object.sliced(1)};
        else
            return false;
        sheet.add(row.effect, scope);
        return true;
    }
    return false;
}

} // namespace

QJsonObject toJson(const Sheet &sheet)
{
    QJsonObject json;
    for (const EffectRow &row : effectRows()) {
        const Scope *scope = sheet.find(row.effect);
        if (!scope)
            continue;
        QJsonArray words = json.value(keyOf(row.effectClass)).toArray();
        if (scope->anything)
            words.append(row.word.isEmpty() ? QString(anythingWord) : row.word.toString());
        if (scope->given)
            words.append(written(row, givenWord));
        // A title cannot be taken for the word "given".
        for (const QString &object : scope->objects)
            words.append(written(row, row.word.isEmpty() ? object : u'=' + object));
        json.insert(keyOf(row.effectClass), words);
    }
    if (!sheet.window().isEmpty())
        json.insert(windowKey, sheet.window());
    return json;
}

std::optional<Sheet> sheetFromText(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    return document.isObject() ? sheetFromJson(document.object()) : std::nullopt;
}

std::optional<Sheet> sheetFromJson(const QJsonObject &json)
{
    Sheet sheet;
    for (auto each = json.begin(); each != json.end(); ++each) {
        if (each.key() == windowKey && each.value().isString()) {
            sheet.setWindow(each.value().toString());
            continue;
        }
        const auto row = std::ranges::find(classKeys, each.key(), &ClassKey::key);
        if (row == classKeys.end() || !each.value().isArray())
            return {};
        const QJsonArray words = each.value().toArray();
        for (const auto &word : words) {
            if (!word.isString() || word.toString().isEmpty()
                || !addWord(sheet, row->effectClass, word.toString()))
                return {};
        }
    }
    return sheet;
}

} // namespace plum
