#include "guard/guarded_starts.h"

#include "engine/helper_programs.h"
#include "engine/script_folders.h"
#include "guard/guard.h"

#include <QStringList>

namespace plum {

using namespace Qt::StringLiterals;

bool GuardedShell::open(const QString &target, const QString &parameters, ShowState state)
{
    return m_guard->allowsRun(target) && m_inner.open(target, parameters, state);
}

bool GuardedShell::startHelper(const QString &program, const QString &commandLine, ShowState state)
{
    bool isAllowed = false;
    if (program == m_folders.browserHelper())
        isAllowed = allowsBrowser(commandLine);
    else if (program == m_folders.downloadHelper())
        isAllowed = allowsDownload(commandLine);
    else
        isAllowed = m_guard->allowsRun(program);
    return isAllowed && m_inner.startHelper(program, commandLine, state);
}

// Takes the fields apart as the browser helper does.
bool GuardedShell::allowsBrowser(const QString &commandLine) const
{
    const QString addressStart = browserUrlMarker + browserFieldSeparator;
    const QString content = commandLine.left(commandLine.lastIndexOf(browserFieldSeparator));
    return commandLine.startsWith(addressStart)
        ? m_guard->allowsAddress(content.sliced(std::min(addressStart.size(), content.size())))
        : m_guard->allowsPage(content);
}

bool GuardedShell::allowsDownload(const QString &commandLine) const
{
    const QStringList fields = commandLine.split(downloadFieldSeparator);
    return m_guard->allowsAddress(fields.value(0))
        && m_guard->allowsNewFile(fields.value(1), fields.value(2));
}

HttpReply GuardedHttpClient::get(const QString &url)
{
    return m_guard->allowsAddress(url) ? m_inner.get(url) : HttpReply();
}

HttpReply GuardedHttpClient::request(const HttpRequest &request)
{
    return m_guard->allowsAddress(request.url) ? m_inner.request(request) : HttpReply();
}

HttpReply GuardedHttpClient::post(const QString &url, const QByteArray &contentType, QIODevice &body)
{
    return m_guard->allowsAddress(url) ? m_inner.post(url, contentType, body) : HttpReply();
}

ProgramResult GuardedProgramRunner::run(
    const QString &program, const QStringList &arguments, qint64 milliseconds)
{
    return m_guard->allowsRun(program) ? m_inner.run(program, arguments, milliseconds) : ProgramResult();
}

} // namespace plum
