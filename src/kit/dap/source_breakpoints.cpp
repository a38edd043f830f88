#include "kit/dap/source_breakpoints.h"

#include "engine/editions/later_edition.h"
#include "stepping/run_control.h"
#include "stepping/runnable_lines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

QString withoutLinks(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : QDir::cleanPath(file.absoluteFilePath());
}

std::optional<QByteArray> contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

} // namespace

void SourceBreakpoints::setProgram(const QString &path)
{
    m_program = path;
    m_edition = askedEdition(contentOf(path).value_or(QByteArray())).number > 1 ? Edition::Two : Edition::One;
    for (const QString &each : m_all.keys())
        apply(each);
}

std::optional<QList<int>> SourceBreakpoints::runnable(const QString &path) const
{
    const std::optional<QByteArray> script = contentOf(path);
    if (!script)
        return {};
    return runnableLines(*script, m_vocabulary, m_edition);
}

QList<SourceBreakpoints::Breakpoint> SourceBreakpoints::set(const QString &path, const QList<int> &lines)
{
    const std::optional<QList<int>> runnable = this->runnable(path);
    QList<Breakpoint> placed;
    for (const int wanted : lines) {
        Breakpoint breakpoint{++m_lastId};
        if (!runnable)
            breakpoint.problem = u"this file cannot be read"_s;
        else if (const auto line = std::ranges::lower_bound(*runnable, wanted); line != runnable->end())
            breakpoint.line = *line;
        else
            breakpoint.problem = u"no line runs from here on"_s;
        placed += breakpoint;
    }
    const QString key = withoutLinks(path);
    m_all.insert(key, placed);
    apply(key);
    return placed;
}

// How a run names a file: not at all if it is the script, by its way from there if it is a part's.
std::optional<QString> SourceBreakpoints::nameInRun(const QString &path) const
{
    const QString program = withoutLinks(m_program);
    if (path == program)
        return QString();
    QString name = QFileInfo(program).dir().relativeFilePath(path);
    const bool isBeside = !m_program.isEmpty() && !name.startsWith(".."_L1) && QDir::isRelativePath(name);
    return isBeside ? std::optional(std::move(name)) : std::nullopt;
}

void SourceBreakpoints::apply(const QString &path)
{
    const std::optional<QString> name = nameInRun(path);
    if (!name)
        return;
    QSet<int> lines;
    for (const Breakpoint &breakpoint : m_all.value(path)) {
        if (breakpoint.line != 0)
            lines.insert(breakpoint.line);
    }
    m_control.setBreakpoints(*name, lines);
}

QString SourceBreakpoints::pathOf(const QString &file) const
{
    return file.isEmpty() ? m_program
                          : QFileInfo(m_program).dir().absoluteFilePath(QDir::fromNativeSeparators(file));
}

QList<int> SourceBreakpoints::idsAt(const QString &file, int line) const
{
    QList<int> ids;
    for (const Breakpoint &breakpoint : m_all.value(withoutLinks(pathOf(file)))) {
        if (breakpoint.line == line)
            ids += breakpoint.id;
    }
    return ids;
}

} // namespace plum::kit
