#include "support/manual_examples.h"

#include "engine/editions/script_error.h"

#include <QFile>

#include <gtest/gtest.h>

namespace plum::recording {

using namespace Qt::StringLiterals;

namespace {

// Reads the document's comments and blocks from the top.
class ExampleReader
{
public:
    explicit ExampleReader(ManualPage page)
        : m_page(page)
    {
    }

    QList<ManualExample> read(const QStringList &lines)
    {
        for (m_line = 0; m_line < lines.size(); ++m_line)
            take(lines[m_line]);
        finish();
        return m_examples;
    }

private:
    void take(const QString &line)
    {
        if (m_inScript && line == "```"_L1)
            m_inScript = false;
        else if (m_inScript)
            m_example.script += line;
        else if (line.startsWith("```plum"_L1))
            begin(line.endsWith(" error"_L1));
        else if (m_inComment || line.startsWith("<!--"_L1))
            takeComment(line);
    }

    void begin(bool isError)
    {
        if (!m_example.script.isEmpty())
            finish();
        m_example.line = m_line + 1;
        m_example.isError = isError;
        m_inScript = true;
    }

    void takeComment(QString line)
    {
        m_inComment = !line.endsWith("-->"_L1);
        line.remove(u"<!--"_s).remove(u"-->"_s);
        const QString word = line.section(u':', 0, 0).trimmed();
        const QString rest = line.section(u':', 1).trimmed();
        if (word == "shows"_L1 && m_page == ManualPage::Edition1) {
            m_example.shows += rest;
            return;
        }
        // What comes before an example ends the one before it.
        if (!m_example.script.isEmpty())
            finish();
        if (word == "given"_L1)
            m_example.given += rest;
        else if (word == "does"_L1)
            m_example.does = rest.split(u" ; "_s, Qt::SkipEmptyParts);
        else if (word == "shows"_L1)
            m_example.shows = rest.split(u" | "_s);
        else if (word == "error"_L1)
            m_example.error = rest;
        else
            ADD_FAILURE() << "line " << m_line + 1 << ": unknown word " << word.toStdString();
    }

    void finish()
    {
        constexpr QLatin1StringView asking("//edition:2");
        if (!m_example.script.isEmpty()) {
            if (m_page == ManualPage::Edition2 && m_example.script.first() != asking)
                m_example.script.prepend(asking);
            m_examples += m_example;
        }
        m_example = {};
    }

    ManualPage m_page;
    QList<ManualExample> m_examples;
    ManualExample m_example;
    int m_line = 0;
    bool m_inScript = false;
    bool m_inComment = false;
};

} // namespace

const QList<ManualExample> &manualExamples(ManualPage page)
{
    const auto read = [](ManualPage which, const char *name) {
        QFile file(QStringLiteral(PLUM_DOCS_FOLDER "/") + QLatin1StringView(name));
        if (!file.open(QIODevice::ReadOnly))
            ADD_FAILURE() << "no " << name;
        return ExampleReader(which).read(QString::fromUtf8(file.readAll()).split(u'\n'));
    };
    static const QList<ManualExample> first = read(ManualPage::Edition1, "edition-1.md");
    static const QList<ManualExample> second = read(ManualPage::Edition2, "scripting.md");
    return page == ManualPage::Edition1 ? first : second;
}

ExampleBench::ExampleBench(const ManualExample &example)
{
    state.runctx[0] = m_files.folder() + u"/main.wf"_s;
    Surroundings around(*this, m_files.folder());
    constexpr QLatin1StringView answer("answer ");
    for (const QString &given : example.given) {
        if (given.startsWith(answer))
            answers += given.sliced(answer.size());
        else
            around.arrange(given);
    }
    platform.log.clear();
}

QString ExampleBench::runToTheEnd(const QStringList &script)
{
    const QString path = m_files.write(u"main.wf"_s, script.join(u'\n').toUtf8());
    try {
        system.starts().prepareCommandLine(path);
        system.starts().runAll();
        for (;;) {
            const QString shown = events().isEmpty() ? QString() : events().last();
            if (!shown.startsWith("tip "_L1) && !shown.startsWith("input "_L1))
                return {};
            const bool isAnswered = shown.startsWith("input "_L1) && !answers.isEmpty();
            const QString answer = isAnswered ? answers.takeFirst() : QString();
            system.starts().answer(1, {isAnswered, shown.section(u'|', 1), answer});
        }
    } catch (const ScriptError &error) {
        const ScriptMistake &first = error.mistakes().front();
        return u"%1:%2: %3"_s.arg(first.line).arg(first.column).arg(first.reason);
    }
}

QStringList ExampleBench::happened() const
{
    QStringList events = platform.log.lines();
    // The bench asks at the end, so that the variables stay, unless the example has stopped before.
    if (!events.isEmpty() && events.last() == "input |"_L1)
        events.removeLast();
    events.removeAll(u"wait 10"_s);
    return events;
}

} // namespace plum::recording
