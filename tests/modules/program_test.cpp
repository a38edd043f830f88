// What the real program loads, and how it ends while a script waits for a module.

#include "support/temporary_files.h"
#include "support/test_server.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::StringLiterals;
using plum::test::OddServer;
using plum::test::TemporaryFiles;
using plum::test::waitUntil;

namespace {

class ProgramTest : public testing::Test
{
protected:
    ~ProgramTest() override
    {
        m_plum.kill();
        m_plum.waitForFinished();
    }

    // Runs `lines` without a display and waits until the last of them begins.
    void runUntilTheLastOf(const QStringList &lines)
    {
        QStringList script = lines;
        script.insert(script.size() - 1, u"file.save \"%1/marker\",\"x\",\"append\""_s.arg(m_files.folder()));
        const QString path = m_files.write(u"main.wf"_s, script.join(u"\r\n"_s).toUtf8());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
        m_plum.setProcessEnvironment(environment);
        m_plum.start(QStringLiteral(PLUM_PROGRAMS_FOLDER "/plum"), {path});
        ASSERT_TRUE(waitUntil([this] { return !m_files.read(u"marker"_s).isEmpty(); }));
    }

    QByteArray loaded() const
    {
        QFile maps(u"/proc/%1/maps"_s.arg(m_plum.processId()));
        return maps.open(QIODevice::ReadOnly) ? maps.readAll() : QByteArray();
    }

    bool endsOnRequest()
    {
        m_plum.terminate();
        return m_plum.waitForFinished() && m_plum.exitStatus() == QProcess::NormalExit;
    }

    QProcess m_plum;
    TemporaryFiles m_files;
};

const QString longWait = QStringLiteral("time.sleep \"60000\"");

} // namespace

TEST_F(ProgramTest, APlainScriptLoadsNoModule)
{
    runUntilTheLastOf({u"set.a \"1\""_s, longWait});
    EXPECT_TRUE(loaded().contains("libQt6Core"));
    for (const char *library : {"libQt6Network", "libQt6Qml", "libQt6WebEngine", "plum-http", "plum-js"})
        EXPECT_FALSE(loaded().contains(library)) << library;
}

TEST_F(ProgramTest, WhatNobodyCanSeeIsSaidInWords)
{
    runUntilTheLastOf({u"os.find_pic \"/no/such.png\""_s, u"os.tips \"read this\""_s});
    QString said;
    EXPECT_TRUE(waitUntil([&] {
        m_plum.waitForReadyRead(1);
        said += QString::fromUtf8(m_plum.readAllStandardError());
        return said.contains(u"shows a tip, and nobody can close it without a display: read this"_s);
    })) << qPrintable(said);
    EXPECT_TRUE(said.contains(u"says: image\\no\\such.pngcan not finf"_s)) << qPrintable(said);
}

TEST_F(ProgramTest, AnUnknownOptionIsSaidAndEnds)
{
    m_plum.start(QStringLiteral(PLUM_PROGRAMS_FOLDER "/plum"), {u"--loud"_s});
    ASSERT_TRUE(m_plum.waitForFinished());
    EXPECT_EQ(m_plum.exitCode(), 2);
    EXPECT_TRUE(m_plum.readAllStandardError().contains("there is no option \"--loud\""));
}

TEST_F(ProgramTest, HelpSaysWhereFilesAreAndHowARunEnds)
{
    QByteArray texts[2];
    for (int i = 0; i < 2; ++i) {
        m_plum.start(QStringLiteral(PLUM_PROGRAMS_FOLDER "/plum"), {i == 0 ? u"-h"_s : u"--help"_s});
        ASSERT_TRUE(m_plum.waitForFinished());
        EXPECT_EQ(m_plum.exitCode(), 0);
        texts[i] = m_plum.readAllStandardOutput();
    }
    EXPECT_EQ(texts[0], texts[1]);
    for (const char *word : {PLUM_PROGRAMS_FOLDER "/config/apps/", "/config/load/", "Ctrl+C", "scripting.md"})
        EXPECT_TRUE(texts[0].contains(word)) << word;
}

TEST_F(ProgramTest, AScriptThatStaysAfterAnErrorSaysSoAndEndsWithItsTerminal)
{
    for (const int signal : {SIGHUP, SIGINT}) {
        const QString path = m_files.write(u"main.wf"_s, "time.sleep \"abc\"");
        m_plum.start(QStringLiteral(PLUM_PROGRAMS_FOLDER "/plum"), {path});
        QByteArray lines;
        EXPECT_TRUE(waitUntil([&] {
            m_plum.waitForReadyRead(1);
            lines += m_plum.readAllStandardError();
            return lines.contains("the process stays; Ctrl+C or \"kill ");
        })) << lines.constData();
        kill(static_cast<pid_t>(m_plum.processId()), signal);
        EXPECT_TRUE(m_plum.waitForFinished());
        EXPECT_EQ(m_plum.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_plum.exitCode(), 0);
    }
}

TEST_F(ProgramTest, AMissingScriptSaysThatTheProcessStays)
{
    m_plum.start(QStringLiteral(PLUM_PROGRAMS_FOLDER "/plum"), {u"/no/such.wf"_s});
    QByteArray lines;
    EXPECT_TRUE(waitUntil([&] {
        m_plum.waitForReadyRead(1);
        lines += m_plum.readAllStandardError();
        return lines.contains("cannot read /no/such.wf") && lines.contains("the process stays");
    })) << lines.constData();
    EXPECT_TRUE(endsOnRequest());
}

TEST_F(ProgramTest, AFetchLoadsTheNetworkAlone)
{
    OddServer server;
    runUntilTheLastOf({u"net.get \"%1\",\"a\""_s.arg(server.address(u"text"_s)), longWait});
    EXPECT_TRUE(loaded().contains("plum-http"));
    EXPECT_FALSE(loaded().contains("libQt6Qml"));
}

TEST_F(ProgramTest, JavaScriptIsLoadedWhenItIsCalled)
{
    m_files.write(u"f.js"_s, "function f() { return 6 * 7; }");
    runUntilTheLastOf({u"file.call_js \"_pfold_/f.js\",\"f\",\"\",\"x\""_s, longWait});
    EXPECT_TRUE(loaded().contains("plum-js"));
    EXPECT_EQ(m_files.read(u"marker"_s), "42\r\n");
}

TEST_F(ProgramTest, CtrlCStopsARunAndAnotherSignalEndsIt)
{
    for (const auto &[signal, status] :
        {std::pair(SIGINT, 130), std::pair(SIGTERM, 0), std::pair(SIGHUP, 0)}) {
        QFile::remove(m_files.folder() + u"/marker"_s);
        runUntilTheLastOf({longWait});
        kill(static_cast<pid_t>(m_plum.processId()), signal);
        EXPECT_TRUE(m_plum.waitForFinished());
        EXPECT_EQ(m_plum.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_plum.exitCode(), status) << signal;
    }
}

TEST_F(ProgramTest, EndsWhileItWaitsForAServer)
{
    OddServer server;
    runUntilTheLastOf({u"set.a \"1\""_s, u"net.get \"%1\",\"a\""_s.arg(server.address(u"held"_s))});
    EXPECT_TRUE(endsOnRequest());
}

TEST_F(ProgramTest, EndsWhileAScriptNeverDoes)
{
    m_files.write(u"f.js"_s, "function f() { while (true) ; }");
    m_files.write(
        u"g.js"_s, "function g() { return /^(a+)+$/.test('aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab'); }");
    runUntilTheLastOf({u"set.a \"1\""_s, u"file.call_js \"_pfold_/f.js\",\"f\",\"\",\"x\""_s});
    EXPECT_TRUE(endsOnRequest());
    QFile::remove(m_files.folder() + u"/marker"_s);
    runUntilTheLastOf({u"set.a \"1\""_s, u"file.call_js \"_pfold_/g.js\",\"g\",\"\",\"x\""_s});
    EXPECT_TRUE(endsOnRequest());
}
