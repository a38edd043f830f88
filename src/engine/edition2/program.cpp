#include "engine/edition2/program.h"

#include "engine/edition2/code_writer.h"
#include "engine/editions/mistake_words.h"

#include <QSet>

#include <algorithm>

namespace plum::edition2 {

using namespace Qt::StringLiterals;

namespace {

// A name that stays inside the app's folder.
bool isFileOfTheApp(const QString &file)
{
    const QStringList pieces = QString(file).replace(u'\\', u'/').split(u'/');
    return !pieces.front().isEmpty() && !file.contains(u':') && !pieces.contains(u".."_s);
}

class Linker
{
public:
    Linker(const LinkNeeds &needs)
        : m_use(needs)
        , m_program(std::make_shared<Program>())
    {
    }

    Linked link(const QString &path, Parsed parsed)
    {
        addFile(path, std::move(parsed));
        for (std::size_t file = 0; file < m_trees.size(); ++file)
            collect(int(file));
        if (m_mistakes.isEmpty())
            write();
        if (!m_mistakes.isEmpty())
            return {nullptr, std::move(m_mistakes)};
        return {std::move(m_program), {}};
    }

private:
    void fail(int file, Position at, const QString &reason)
    {
        m_mistakes += {m_program->files[file], at.line, at.column, reason};
    }

    void addFile(const QString &path, Parsed parsed)
    {
        const int file = int(m_trees.size());
        m_program->files += path;
        for (const Mistake &mistake : parsed.mistakes)
            fail(file, mistake.at, mistake.reason);
        m_trees.push_back(std::move(parsed.tree));
    }

    // The parts of a file, and the files that it uses, which come behind it. The trees may move meanwhile.
    void collect(int file)
    {
        for (std::size_t index = 0; index < m_trees[std::size_t(file)].statements.size(); ++index) {
            const Statement &statement = m_trees[std::size_t(file)].statements[index];
            if (statement.isBlock() && statement.sections.front().head.word == Word::PartStart)
                addPart(file, statement.sections.front().head);
            else if (statement.line.word == Word::PartUse && !statement.line.values.empty())
                use(file, Value(statement.line.values.front()));
            else if (file > 0 && (statement.isBlock() || statement.line.word != Word::Comment))
                fail(file, statement.isBlock() ? statement.sections.front().head.at : statement.line.at,
                    MistakeWords::tr("a file that is used holds parts only"));
        }
    }

    void addPart(int file, const Line &head)
    {
        Part part{.name = {}, .arguments = {}, .file = file, .at = head.at};
        for (const Value &value : head.values) {
            if (part.name.isEmpty()) {
                part.name = value.text;
                continue;
            }
            if (part.arguments.contains(value.text))
                fail(file, value.at, MistakeWords::tr("%1 has this argument already").arg(part.name));
            part.arguments += value.text;
        }
        if (std::ranges::find(m_program->parts, part.name, &Part::name) != m_program->parts.end())
            fail(file, head.at, MistakeWords::tr("there is a part %1 already").arg(part.name));
        m_program->parts.push_back(std::move(part));
    }

    void use(int file, const Value &value)
    {
        if (value.form != Form::Text || !isFileOfTheApp(value.text)) {
            fail(file, value.at, MistakeWords::tr("part.use names a file in the app's folder"));
            return;
        }
        if (m_used.contains(value.text))
            return;
        m_used.insert(value.text);
        if (const std::optional<QString> text = m_use.load(value.text))
            addFile(value.text, parse(*text, m_use.vocabulary));
        else
            fail(file, value.at, MistakeWords::tr("%1 cannot be read").arg(value.text));
    }

    void write()
    {
        CodeWriter writer(*m_program, m_use,
            [this](int file, Position at, const QString &reason) { fail(file, at, reason); });
        writer.writeScript(m_trees.front());
        std::size_t next = 0;
        for (std::size_t file = 0; file < m_trees.size(); ++file) {
            for (const Statement &statement : m_trees[file].statements) {
                if (statement.isBlock() && statement.sections.front().head.word == Word::PartStart)
                    writer.writePart(statement.sections.front(), m_program->parts[next++]);
            }
        }
    }

    const LinkNeeds &m_use;
    std::shared_ptr<Program> m_program;
    std::vector<Tree> m_trees;
    QSet<QString> m_used;
    QList<ScriptMistake> m_mistakes;
};

} // namespace

Linked link(const QString &path, QStringView text, const LinkNeeds &needs)
{
    return link(path, parse(text, needs.vocabulary), needs);
}

Linked link(const QString &path, Parsed parsed, const LinkNeeds &needs)
{
    return Linker(needs).link(path, std::move(parsed));
}

} // namespace plum::edition2
