#include "check/edition2/edition2_check.h"

#include "check/edition2/scope_walk.h"
#include "engine/edition2/program.h"

#include <QFile>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPart = qint64(1) << 20; // bytes of a file of parts that is read for a check

std::optional<QString> readBeside(const AppFiles &files, const QString &name)
{
    QFile file(files.resolved(u"_pfold_/"_s + name));
    if (file.size() > largestPart || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

void checkSyntax(
    const QString &text, const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report)
{
    const QString own;
    const Linked linked = link(own, text,
        {vocabulary, [](const QString &) -> Handler * { return nullptr; },
            [&files](const QString &name) { return readBeside(files, name); }});
    for (const ScriptMistake &mistake : linked.mistakes) {
        const bool isHere = mistake.file == own;
        report.add(isHere ? mistake.line : 1, isHere ? mistake.column : 1, u"syntax",
            isHere ? asSentence(mistake.reason)
                   : asSentence(u"%1:%2:%3: %4"_s.arg(mistake.file)
                                    .arg(mistake.line)
                                    .arg(mistake.column)
                                    .arg(mistake.reason)));
    }
}

} // namespace

void check(const QString &text, const ScriptVocabulary &vocabulary, const AppFiles &files, Report &report)
{
    checkSyntax(text, vocabulary, files, report);
    const Parsed parsed = parse(text, vocabulary);
    ScopeWalk(vocabulary, files, report).walk(parsed.tree);
}

} // namespace plum::edition2
