#pragma once

#include "commands/notices.h"
#include "commands/store_page.h"
#include "http/http_client.h"
#include "platform/recording/recording_platform.h"
#include "programs/program_runner.h"

#include <QIODevice>

namespace plum::recording {

// A server that gives one answer and remembers what was posted, or the way to the real ones.
class RecordingHttpClient final : public HttpClient
{
public:
    explicit RecordingHttpClient(Log &log)
        : m_log(log)
    {
    }

    QString unavailable() override { return reaching ? reaching->unavailable() : problem; }

    HttpReply get(const QString &url) override
    {
        m_log.add(QStringLiteral("get ") + url);
        return reaching ? reaching->get(url) : answer;
    }

    HttpReply request(const HttpRequest &request) override
    {
        m_log.add(QStringLiteral("request %1 %2 %3")
                      .arg(QString::fromUtf8(request.method), request.url)
                      .arg(request.milliseconds));
        requested = request;
        return reaching ? reaching->request(request) : answer;
    }

    HttpReply post(const QString &url, const QByteArray &contentType, QIODevice &body) override
    {
        m_log.add(QStringLiteral("post ") + url);
        if (reaching)
            return reaching->post(url, contentType, body);
        postedType = contentType;
        postedBody = body.readAll();
        return answer;
    }

    void giveUp() override
    {
        if (reaching)
            reaching->giveUp();
    }

    HttpReply answer;
    HttpClient *reaching = nullptr; // answers in its place
    QString problem;
    HttpRequest requested;
    QByteArray postedType;
    QByteArray postedBody;

private:
    Log &m_log;
};

// Programs that end as the test says.
class RecordingProgramRunner final : public ProgramRunner
{
public:
    explicit RecordingProgramRunner(Log &log)
        : m_log(log)
    {
    }

    ProgramResult run(const QString &program, const QStringList &arguments, qint64 milliseconds) override
    {
        m_log.add(QStringLiteral("run %1|%2|%3").arg(program, arguments.join(u'|')).arg(milliseconds));
        return result;
    }

    ProgramResult result;

private:
    Log &m_log;
};

class RecordingStorePage final : public StorePage
{
public:
    explicit RecordingStorePage(Log &log)
        : m_log(log)
    {
    }

    void setBrowserWidth(int pixels) override { m_log.add(QStringLiteral("browser width %1").arg(pixels)); }
    void setBrowserHeight(int pixels) override { m_log.add(QStringLiteral("browser height %1").arg(pixels)); }
    void navigateToBlank() override { m_log.add(QStringLiteral("browser blank")); }
    void layOut() override { m_log.add(QStringLiteral("store layout")); }
    void showLoadingPicture() override { m_log.add(QStringLiteral("store loading")); }

private:
    Log &m_log;
};

class RecordingNotices final : public Notices
{
public:
    explicit RecordingNotices(Log &log)
        : m_log(log)
    {
    }

    void tell(const QString &line) override { m_log.add(QStringLiteral("notice ") + line); }

private:
    Log &m_log;
};

} // namespace plum::recording
