#include "engine/editions/script_error.h"
#include "support/script_bench.h"
#include "support/surroundings.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

// Every script below this folder is a rule of edition 2, and says itself what it expects:
//
//   show.that set.n                    // expect: 1 | 2    what the line shows, pass after pass
//   input.text n,"Your name"           // answer: Ann | Bob    what the user says, pass after pass
//   input.text n,"Your name"           // gives up
//   os.tips "Done"                     // closes
//   // given: pixel 3 4 FF0000          what is there before, in the words of surroundings.h
//   // after 2 waits: gone 7            what comes about while it waits for the second time
//   // does: wait 10 ; mouse 2         everything that the script does; "nothing" for nothing at all
//   // error 3:7: reason               what ends the run or keeps it from beginning; the reason's beginning
//   is enough
//
// A file whose name begins with "_" is used by others.

using namespace Qt::StringLiterals;
using namespace plum;
using plum::recording::ScriptBench;
using plum::recording::Surroundings;

namespace {

// `show.that value,line`: the walker writes the number of the line behind the value.
class ShowCommands final : public Handler
{
public:
    explicit ShowCommands(QMap<int, QStringList> &shown)
        : m_shown(shown)
    {
    }

    Next call(const CommandCall &call) override
    {
        m_shown[call.arg(1).toInt()] += call.arg(0);
        return Next::GoOn;
    }

    QList<CommandInfo> commands() const override
    {
        constexpr Field line{u"line", FieldKind::Number};
        return {{u"that", {{{u"value", FieldKind::Text}, line.optional()}}, u"Shows a value."}};
    }

private:
    QMap<int, QStringList> &m_shown;
};

QStringList linesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

QString behind(const QString &line, const QString &mark)
{
    const qsizetype at = line.indexOf(mark);
    return at < 0 ? QString() : line.sliced(at + mark.size()).trimmed();
}

struct Expected
{
    QMap<int, QStringList> shown;
    std::optional<QStringList> events;
    QStringList errors; // "line:column: reason"
    QList<Answer> answers;
    QStringList given;
    QMultiMap<int, QString> later; // by the number of the wait
};

Expected expectedOf(const QStringList &lines)
{
    Expected expected;
    for (int index = 0; index < lines.size(); ++index) {
        const QString &line = lines[index];
        if (line.contains("// expect:"_L1))
            expected.shown[index + 1] = behind(line, u"// expect:"_s).split(u" | "_s);
        if (const QString events = behind(line, u"// does:"_s); !events.isEmpty())
            expected.events = events == "nothing"_L1 ? QStringList() : events.split(u" ; "_s);
        if (const QString error = behind(line, u"// error "_s); !error.isEmpty())
            expected.errors += error;
        if (line.contains("// answer:"_L1)) {
            const QString variable = behind(line, u"input.text "_s).section(u',', 0, 0);
            for (const QString &text : behind(line, u"// answer:"_s).split(u" | "_s))
                expected.answers += Answer{true, variable, text};
        }
        if (const QString words = behind(line, u"// given:"_s); !words.isEmpty())
            expected.given += words;
        if (const QString words = behind(line, u"// after "_s); !words.isEmpty())
            expected.later.insert(words.section(u' ', 0, 0).toInt(), behind(words, u"waits:"_s));
        if (line.contains("// gives up"_L1) || line.contains("// closes"_L1))
            expected.answers += Answer{};
    }
    return expected;
}

// Writes the line's number behind what a line shows, so that its place is known when it runs.
QString numbered(QStringList lines)
{
    for (int index = 0; index < lines.size(); ++index) {
        QString &line = lines[index];
        const qsizetype comment = line.indexOf(" // expect:"_L1);
        if (comment < 0)
            continue;
        qsizetype end = comment;
        while (line[end - 1] == u' ')
            --end;
        line.insert(end, u",%1"_s.arg(index + 1));
    }
    return lines.join(u'\n');
}

QStringList scripts()
{
    QStringList found;
    QDirIterator walk(
        QStringLiteral(PLUM_LANGUAGE_TESTS), {u"*.wf"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QFileInfo file(walk.next());
        if (!file.fileName().startsWith(u'_'))
            found += file.filePath();
    }
    found.sort();
    return found;
}

class LanguageRule : public testing::TestWithParam<std::string>
{
};

std::string nameOf(const testing::TestParamInfo<std::string> &info)
{
    QString name = QString::fromStdString(info.param);
    name.remove(QStringLiteral(PLUM_LANGUAGE_TESTS) + u'/').chop(3);
    return name.replace(QRegularExpression(u"[^A-Za-z0-9]"_s), u"_"_s).toStdString();
}

std::vector<std::string> names()
{
    std::vector<std::string> all;
    for (const QString &script : scripts())
        all.push_back(script.toStdString());
    return all;
}

} // namespace

TEST_P(LanguageRule, holds)
{
    const QFileInfo script(QString::fromStdString(GetParam()));
    const QTemporaryDir folder;
    for (const QFileInfo &file : script.dir().entryInfoList({u"*.wf"_s}, QDir::Files)) {
        QFile copy(folder.filePath(file.fileName()));
        ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
        copy.write(numbered(linesOf(file.filePath())).toUtf8());
    }
    const Expected expected = expectedOf(linesOf(script.filePath()));

    ScriptBench bench;
    QMap<int, QStringList> shown;
    bench.system.engine().add(u"show"_s, std::make_unique<ShowCommands>(shown));
    bench.launcher.keywordBox = u"mail Ann,Bob"_s;
    Surroundings around(bench, folder.path());
    for (const QString &words : expected.given)
        around.arrange(words);
    bench.waiter.onWait = [&, waits = 0]() mutable {
        const QStringList now = expected.later.values(++waits);
        for (const QString &words : now)
            around.arrange(words);
    };
    const RunStart::CommandLineScript start
        = bench.system.starts().prepareCommandLine(folder.filePath(script.fileName()));
    ASSERT_TRUE(start.loaded);

    QStringList errors;
    const auto guarded = [&](const std::function<void()> &run) {
        try {
            run();
        } catch (const ScriptError &error) {
            for (const ScriptMistake &mistake : error.mistakes())
                errors += u"%1:%2: %3"_s.arg(mistake.line).arg(mistake.column).arg(mistake.reason);
        }
    };
    guarded([&] { bench.system.starts().runAll(); });
    for (const Answer &answer : expected.answers)
        guarded([&] { bench.system.starts().answer(1, answer); });

    EXPECT_EQ(shown, expected.shown);
    ASSERT_EQ(errors.size(), expected.errors.size()) << errors.join(u'\n').toStdString();
    for (qsizetype index = 0; index < errors.size(); ++index)
        EXPECT_TRUE(errors[index].startsWith(expected.errors[index])) << errors[index].toStdString();
    if (expected.events) {
        EXPECT_EQ(bench.events(), *expected.events + QStringList(errors.isEmpty(), u"end process"_s));
    }
}

INSTANTIATE_TEST_SUITE_P(Edition2, LanguageRule, testing::ValuesIn(names()), nameOf);
