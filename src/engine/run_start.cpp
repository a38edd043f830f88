#include "engine/run_start.h"

#include "engine/conversions.h"
#include "engine/run_loop.h"
#include "engine/run_state.h"
#include "engine/script_folders.h"
#include "engine/text_files.h"
#include "platform/paths.h"

#include <QDir>

namespace plum {

using namespace Qt::StringLiterals;

RunStart::CommandLineScript RunStart::prepareCommandLine(const QString &commandLine)
{
    m_state.runidx[2] = 1;
    m_state.runctx[1] = u"jb"_s;
    m_state.currentKeyword.clear();

    QString path = commandLine;
    if (commandLine.startsWith(u'"')) {
        path = commandLine.sliced(1).chopped(commandLine.size() > 1 ? 1 : 0);
        m_state.runctx[0] = path;
        // A quoted script of the library is then looked for below the working folder; kept.
        path.remove(m_folders.apps() + u'\\');
    } else {
        m_state.runctx[0] = path;
    }
    if (!path.endsWith(".wf"_L1))
        path.clear();
    // The running script's path is a full one even when a shell was given a relative name.
    else if (QDir::isRelativePath(m_paths.toSystem(m_state.runctx[0])))
        m_state.runctx[0] = QDir::current().absoluteFilePath(m_state.runctx[0]);

    return {path, LoadScript(path)};
}

void RunStart::runApp(const QString &keyword, ScriptPath scriptPath)
{
    m_state.currentKeyword = keyword;
    if (scriptPath == ScriptPath::Remembered)
        m_state.runctx[0] = m_folders.app(keyword) + u"\\main.wf"_s;
    LoadScript(m_folders.appScript(keyword));
    runAll();
}

void RunStart::runAll()
{
    m_state.runidx[0] = 0;
    m_state.runidx[1] = lastIndex();
    m_loop.RunLines(m_state.runidx[0], m_state.runidx[1]);
}

void RunStart::resume()
{
    qint16 end = lastIndex();
    m_loop.RunLines(m_state.runidx[0], end);
}

bool RunStart::LoadScript(const QString &path)
{
    m_state.runlist.clear();
    return m_files.appendLines(path, m_state.runlist);
}

qint16 RunStart::lastIndex() const
{
    return toInt16(static_cast<double>(m_state.runlist.size()) - 1);
}

} // namespace plum
