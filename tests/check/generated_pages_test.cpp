// What is made from the command tables and lies in the tree is what the tables say now.
#include "check/command_reference.h"
#include "check/textmate_grammar.h"
#include "support/chinese_session.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

QStringList linesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

QStringList differing(const QStringList &committed, const QStringList &made)
{
    QStringList lines;
    for (qsizetype i = 0; i < std::max(committed.size(), made.size()) && lines.size() < 5; ++i) {
        if (committed.value(i) != made.value(i))
            lines += u"%1: \"%2\" should be \"%3\""_s.arg(i + 1).arg(committed.value(i), made.value(i));
    }
    return lines;
}

TEST(GeneratedPages, theReferenceIsWhatTheTablesSay)
{
    const QString made = commandReference(recording::ScriptBench().system.vocabulary());
    EXPECT_EQ(differing(linesOf(QStringLiteral(PLUM_DOCS_FOLDER) + u"/commands.md"_s), made.split(u'\n')),
        QStringList())
        << "plumkit reference > docs/commands.md";
}

TEST(GeneratedPages, theReferenceIsWhatTheTablesSayInChinese)
{
    const test::ChineseSession session;
    const QString made = commandReference(recording::ScriptBench().system.vocabulary());
    EXPECT_EQ(differing(linesOf(QStringLiteral(PLUM_DOCS_FOLDER) + u"/commands.zh.md"_s), made.split(u'\n')),
        QStringList())
        << "the sentences are those of plum::CommandWords in src/look/translations/plum_zh.ts";
}

TEST(GeneratedPages, theGrammarIsWhatTheTablesSay)
{
    const QString made = textMateGrammar(recording::ScriptBench().system.vocabulary());
    EXPECT_EQ(
        differing(linesOf(QStringLiteral(PLUM_EDITORS_FOLDER) + u"/vscode/syntaxes/plum.tmLanguage.json"_s),
            made.split(u'\n')),
        QStringList())
        << "plumkit reference --format textmate > editors/vscode/syntaxes/plum.tmLanguage.json";
}

// The manual's own tables of commands: whatever it names there is a command of edition 2.
TEST(GeneratedPages, theManualNamesOnlyCommandsThatThereAre)
{
    const QString reference = commandReference(recording::ScriptBench().system.vocabulary());
    static const QRegularExpression named(u"`([a-z]+\\.[a-z_]+[a-z])[ `]"_s);
    int looked = 0;
    for (const QString &line : linesOf(QStringLiteral(PLUM_DOCS_FOLDER) + u"/scripting.md"_s)) {
        if (!line.startsWith("| `"_L1))
            continue;
        const QRegularExpressionMatch command = named.match(line.left(line.indexOf(u'|', 2)));
        const QString head = command.captured(1);
        static const QStringList elsewhere{
            u"set"_s, u"str"_s, u"os"_s, u"mouse"_s, u"me"_s}; // references, edition 1
        if (!command.hasMatch() || elsewhere.contains(head.left(head.indexOf(u'.'))))
            continue;
        ++looked;
        EXPECT_TRUE(reference.contains(u"### `%1"_s.arg(head))) << head.toStdString();
    }
    EXPECT_GT(looked, 20);
}

} // namespace
} // namespace plum
