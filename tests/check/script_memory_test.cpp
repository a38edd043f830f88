// A script that is checked as somebody edits it has the findings and names that it has when it is checked by
// itself.
#include "check/random_edition2_scripts.h"
#include "check/random_scripts.h"
#include "check/script_check.h"
#include "support/dice.h"
#include "support/manual_examples.h"
#include "support/script_bench.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

constexpr int scriptsEach = 150;
constexpr int editsEach = 60;

QStringList linesIn(const QString &folder)
{
    QStringList lines;
    for (const QFileInfo &info : QDir(folder).entryInfoList({u"*.wf"_s})) {
        QFile file(info.filePath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        lines += QString::fromLatin1(file.readAll()).remove(u'\r').split(u'\n');
    }
    return lines;
}

// Lines that ask much of the lines around them, right and wrong ones.
QStringList lively()
{
    const QString folder = QStringLiteral(PLUM_TESTS_FOLDER "/check/");
    QStringList lines = linesIn(folder + u"rules"_s) + linesIn(folder + u"edition2"_s);
    for (const auto page : {recording::ManualPage::Edition1, recording::ManualPage::Edition2}) {
        for (const recording::ManualExample &example : recording::manualExamples(page))
            lines += example.script;
    }
    EXPECT_GT(lines.size(), 400);
    return lines;
}

class Editing
{
public:
    Editing(recording::Dice &dice, const QStringList &pool, QStringList lines)
        : m_dice(dice)
        , m_pool(pool)
        , m_lines(std::move(lines))
    {
    }

    void change()
    {
        const int at = m_dice.below(int(m_lines.size()) + 1);
        const int most = int(m_lines.size()) - at;
        switch (m_dice.below(6)) {
        case 0: // some lines go
            m_lines.remove(at, std::min(most, m_dice.below(4)));
            break;
        case 1: // some come
            for (int left = 1 + m_dice.below(3); left > 0; --left)
                m_lines.insert(at, oneOfThePool());
            break;
        case 2: // one goes elsewhere
            if (most > 0)
                m_lines.move(at, m_dice.below(int(m_lines.size())));
            break;
        case 3:
            if (most > 0)
                m_lines[at] = oneOfThePool();
            break;
        default: // a letter comes, or goes
            if (most > 0)
                type(m_lines[at]);
        }
    }

    QByteArray script(const QString &lineEnd) const { return m_lines.join(lineEnd).toUtf8() + "\r\n"; }

private:
    QString oneOfThePool() { return m_pool[m_dice.below(int(m_pool.size()))]; }

    void type(QString &line)
    {
        static const QString typed = u"abn.,\"+?()${}: /0"_s;
        const int at = m_dice.below(int(line.size()) + 1);
        if (at < line.size() && m_dice.oneIn(2))
            line.remove(at, 1);
        else
            line.insert(at, typed[m_dice.below(int(typed.size()))]);
    }

    recording::Dice &m_dice;
    const QStringList &m_pool;
    QStringList m_lines;
};

std::string shown(const Findings &findings)
{
    std::string text;
    for (const Finding &finding : findings)
        text += u"%1:%2 %3 [%4]\n"_s.arg(finding.line)
                    .arg(finding.column)
                    .arg(finding.message, finding.rule)
                    .toStdString();
    return text;
}

template <typename RandomScripts> void expectSameWhileEdited(const QString &lineEnd)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const ScriptCheck check(vocabulary);
    const QStringList pool = lively();
    const QString folder = QStringLiteral(PLUM_TESTS_FOLDER "/check/rules");
    RandomScripts random(vocabulary, 7);
    recording::Dice dice(7);
    qsizetype found = 0;
    for (int i = 0; i < scriptsEach && !testing::Test::HasFailure(); ++i) {
        Editing editing(dice, pool, random.next());
        ScriptMemory memory;
        for (int edit = 0; edit < editsEach && !testing::Test::HasFailure(); ++edit) {
            const QByteArray script = editing.script(lineEnd);
            const ScriptCheck::Examined whole = check.examine(script, folder);
            const ScriptCheck::Examined edited = check.examine(script, folder, memory);
            EXPECT_TRUE(edited.findings == whole.findings)
                << script.toStdString() << shown(edited.findings) << "---\n"
                << shown(whole.findings);
            EXPECT_TRUE(edited.names.uses == whole.names.uses) << script.toStdString();
            EXPECT_EQ(edited.names.scopes, whole.names.scopes);
            EXPECT_EQ(edited.names.areAllKnown, whole.names.areAllKnown);
            found += whole.findings.size();
            editing.change();
        }
    }
    EXPECT_GT(found, scriptsEach * editsEach);
}

TEST(ScriptMemories, giveTheFindingsOfAWholeCheckInEdition1)
{
    expectSameWhileEdited<test::RandomScripts>(u"\r\n"_s);
}

TEST(ScriptMemories, giveTheFindingsOfAWholeCheckInEdition2)
{
    expectSameWhileEdited<test::RandomEdition2Scripts>(u"\n"_s);
}

// Other programs change files without a word to the editor.
TEST(ScriptMemories, lookAtFilesAnew)
{
    const QTemporaryDir folder;
    const ScriptCheck check(recording::ScriptBench().system.vocabulary());
    for (const QByteArray script :
        {"file.open \"_pfold_/notes.txt\",\"\",\"\"\r\n", "//edition:2\nfile.open \"_pfold_/notes.txt\"\n"}) {
        ScriptMemory memory;
        const auto isMissing = [&] {
            const Findings findings = check.examine(script, folder.path(), memory).findings;
            return std::ranges::any_of(
                findings, [](const Finding &finding) { return finding.rule == "missing-file"_L1; });
        };
        EXPECT_TRUE(isMissing());
        QFile notes(folder.filePath(u"notes.txt"_s));
        ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
        notes.close();
        EXPECT_FALSE(isMissing());
        EXPECT_FALSE(isMissing());
        ASSERT_TRUE(notes.remove());
        EXPECT_TRUE(isMissing());
    }
}

} // namespace
} // namespace plum
