#pragma once

#include "http/http_client.h"
#include "platform/shell.h"
#include "programs/program_runner.h"

namespace plum {

class Guard;
class ScriptFolders;

// What runs start and whom they talk to beside the platform's ports. What is refused answers like a call that
// failed.

class GuardedShell final : public Shell
{
public:
    GuardedShell(Shell &inner, Guard *const &guard, const ScriptFolders &folders)
        : m_inner(inner)
        , m_guard(guard)
        , m_folders(folders)
    {
    }

    bool open(const QString &target, const QString &parameters, ShowState state) override;
    bool startHelper(const QString &program, const QString &commandLine, ShowState state) override;
    QString desktopFolder() override { return m_inner.desktopFolder(); }
    QString shortcutTarget(const QString &path) override { return m_inner.shortcutTarget(path); }

private:
    bool allowsBrowser(const QString &commandLine) const;
    bool allowsDownload(const QString &commandLine) const;

    Shell &m_inner;
    Guard *const &m_guard;
    const ScriptFolders &m_folders;
};

class GuardedHttpClient final : public HttpClient
{
public:
    GuardedHttpClient(HttpClient &inner, Guard *const &guard)
        : m_inner(inner)
        , m_guard(guard)
    {
    }

    QString unavailable() override { return m_inner.unavailable(); }
    HttpReply get(const QString &url) override;
    HttpReply request(const HttpRequest &request) override;
    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override;

private:
    HttpClient &m_inner;
    Guard *const &m_guard;
};

class GuardedProgramRunner final : public ProgramRunner
{
public:
    GuardedProgramRunner(ProgramRunner &inner, Guard *const &guard)
        : m_inner(inner)
        , m_guard(guard)
    {
    }

    ProgramResult run(const QString &program, const QStringList &arguments, qint64 milliseconds) override;

private:
    ProgramRunner &m_inner;
    Guard *const &m_guard;
};

} // namespace plum
