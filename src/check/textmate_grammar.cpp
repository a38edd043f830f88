#include "check/textmate_grammar.h"

#include "check/edition1/references.h"
#include "engine/edition2/own_words.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

const QString variableName = u"[\\p{L}_][\\p{L}\\p{M}\\p{N}_]*"_s;
const QString never = u"(?!)"_s; // the rest of the file

QJsonObject captures(std::initializer_list<std::pair<int, QString>> scopes)
{
    QJsonObject found;
    for (const auto &[group, scope] : scopes)
        found[QString::number(group)] = QJsonObject{{u"name"_s, scope}};
    return found;
}

QJsonObject matching(const QString &pattern, const QString &scope)
{
    return {{u"match"_s, pattern}, {u"name"_s, scope}};
}

QJsonObject include(const QString &name)
{
    return {{u"include"_s, u'#' + name}};
}

// Long words first: an alternative that matches ends the search.
QString oneOf(QStringList words)
{
    words.sort();
    std::ranges::stable_sort(words, std::ranges::greater(), &QString::size);
    words.removeDuplicates();
    for (QString &word : words)
        word = word.endsWith(u'_') ? word + u"[0-9]+"_s : QRegularExpression::escape(word);
    return words.join(u'|');
}

// A line's head with the words that its namespace has.
QJsonObject head(const QString &nameSpace, const QStringList &words, Edition edition, bool isControl)
{
    const QString blanks = edition == Edition::Two ? u"[ \\t]*"_s : QString();
    return {{u"match"_s, u"^%1(%2)(\\.)(%3)(?=[ \\t]|$)"_s.arg(blanks, nameSpace, oneOf(words))},
        {u"captures"_s,
            captures({{1, isControl ? u"keyword.control.plum"_s : u"support.class.plum"_s},
                {2, u"punctuation.accessor.plum"_s},
                {3, isControl ? u"keyword.control.plum"_s : u"support.function.plum"_s}})}};
}

QJsonObject assignment(Edition edition)
{
    const bool isSecond = edition == Edition::Two;
    return {{u"match"_s,
                u"^%1(set)(\\.)(%2)"_s.arg(
                    isSecond ? u"[ \\t]*"_s : QString(), isSecond ? variableName : u"[^\\s.]+"_s)},
        {u"captures"_s,
            captures({{1, u"keyword.other.plum"_s}, {2, u"punctuation.accessor.plum"_s},
                {3, u"variable.other.plum"_s}})}};
}

QJsonArray heads(const ScriptVocabulary &vocabulary, Edition edition)
{
    QMap<QString, QStringList> words;
    for (auto table = vocabulary.tables().constBegin(); table != vocabulary.tables().constEnd(); ++table) {
        for (const CommandInfo &info : *table) {
            if (info.existsIn(edition) && !info.word.isEmpty())
                words[table.key()] += info.word.toString();
        }
    }
    QMap<QString, QStringList> own;
    if (edition == Edition::Two) {
        for (const edition2::OwnWord &word : edition2::ownWords()) {
            if (!word.info.word.isEmpty())
                own[word.nameSpace.toString()] += word.info.word.toString();
        }
    } else {
        own[u"while"_s] = words.take(u"while"_s);
    }
    QJsonArray patterns{assignment(edition)};
    for (auto it = own.constBegin(); it != own.constEnd(); ++it)
        patterns += head(it.key(), *it, edition, true);
    for (auto it = words.constBegin(); it != words.constEnd(); ++it)
        patterns += head(it.key(), *it, edition, false);
    return patterns;
}

QJsonArray references()
{
    QJsonArray patterns{matching(u"\\bset\\.%1"_s.arg(variableName), u"variable.other.plum"_s)};
    QStringList prefixes = edition1::referencePrefixes();
    prefixes.sort();
    for (const QString &prefix : prefixes) {
        const QStringList names = edition1::referenceNames(prefix);
        if (names.isEmpty())
            continue;
        const QString pieces = prefix == "me"_L1 ? u"|enter_input_[0-9]+"_s : QString();
        patterns += matching(u"\\b%1\\.(?:%2%3)(?![\\p{L}\\p{N}_])"_s.arg(prefix, oneOf(names), pieces),
            u"support.variable.plum"_s);
    }
    return patterns;
}

QJsonObject quoted(const QString &begin, const QString &end, const QString &scope, const QJsonArray &patterns)
{
    return {{u"begin"_s, begin}, {u"end"_s, end}, {u"name"_s, scope}, {u"patterns"_s, patterns}};
}

QJsonArray edition1Patterns(const ScriptVocabulary &vocabulary)
{
    QJsonArray patterns{matching(u"^//.*$"_s, u"comment.line.double-slash.plum"_s)};
    for (const auto &pattern : heads(vocabulary, Edition::One))
        patterns += pattern;
    patterns += quoted(u"\""_s, u"\"|$"_s, u"string.quoted.double.plum"_s,
        {matching(u"_,_"_s, u"constant.character.escape.plum"_s)});
    patterns += matching(u"_,_"_s, u"constant.character.escape.plum"_s);
    patterns += matching(u"\\+\\?\\+"_s, u"constant.other.placeholder.plum"_s);
    patterns += include(u"references"_s);
    return patterns;
}

QJsonArray edition2Patterns(const ScriptVocabulary &vocabulary)
{
    const QJsonObject doubled = matching(u"\"\""_s, u"constant.character.escape.plum"_s);
    QJsonArray patterns{matching(u"(?:^|(?<=[ \\t]))//.*$"_s, u"comment.line.double-slash.plum"_s)};
    for (const auto &pattern : heads(vocabulary, Edition::Two))
        patterns += pattern;
    patterns += quoted(u"\\$\""_s, u"\"(?!\")|$"_s, u"string.interpolated.plum"_s,
        {doubled, matching(u"\\{\\{|\\}\\}"_s, u"constant.character.escape.plum"_s),
            QJsonObject{{u"match"_s, u"(\\{)(%1(?:\\.%1)?)(\\})"_s.arg(variableName)},
                {u"captures"_s,
                    captures({{1, u"punctuation.section.embedded.plum"_s}, {2, u"variable.other.plum"_s},
                        {3, u"punctuation.section.embedded.plum"_s}})}}});
    patterns += quoted(u"\""_s, u"\"(?!\")|$"_s, u"string.quoted.double.plum"_s, {doubled});
    patterns += include(u"references"_s);
    // A colour of digits alone cannot be told from a number here.
    patterns += matching(u"(?<![\\p{L}\\p{N}_.:])(?=[0-9]*[A-Fa-f])[0-9A-Fa-f]{6}(?![\\p{L}\\p{N}_.])"_s,
        u"constant.other.color.plum"_s);
    patterns += matching(u"(?<![\\p{L}\\p{N}_.:])-?[0-9]+(?:\\.[0-9]+|(?::-?[0-9]+)+)?(?![\\p{L}\\p{N}_])"_s,
        u"constant.numeric.plum"_s);
    patterns += matching(u"(?<![\\p{L}\\p{N}_.])%1"_s.arg(variableName), u"constant.other.plum"_s);
    return patterns;
}

// A comment line that opens the rest of the file.
QJsonObject opening(const QString &line, const QJsonArray &patterns)
{
    return {{u"begin"_s, line}, {u"end"_s, never},
        {u"beginCaptures"_s, captures({{0, u"comment.line.double-slash.plum"_s}})},
        {u"patterns"_s, patterns}};
}

} // namespace

QString textMateGrammar(const ScriptVocabulary &vocabulary)
{
    const QString asking = u"//edition:2(?![0-9]).*$"_s;
    const QJsonArray second{include(u"edition2"_s)};
    const QJsonObject repository{
        {u"edition1"_s, QJsonObject{{u"patterns"_s, edition1Patterns(vocabulary)}}},
        {u"edition2"_s, QJsonObject{{u"patterns"_s, edition2Patterns(vocabulary)}}},
        {u"references"_s, QJsonObject{{u"patterns"_s, references()}}},
    };
    const QJsonObject grammar{{u"name"_s, u"Plum"_s}, {u"scopeName"_s, u"source.plum"_s},
        {u"fileTypes"_s, QJsonArray{u"wf"_s}},
        {u"patterns"_s,
            QJsonArray{opening(u"\\A"_s + asking, second),
                opening(u"\\A//guide:.*$"_s, {opening(u'^' + asking, second), include(u"edition1"_s)}),
                include(u"edition1"_s)}},
        {u"repository"_s, repository}};
    return QString::fromUtf8(QJsonDocument(grammar).toJson());
}

} // namespace plum
