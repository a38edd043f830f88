#include "support/dice.h"
#include "support/temporary_files.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::recording::Dice;
using plum::test::TemporaryFiles;

namespace {

// Answers every range of one content, some bytes a millisecond.
class SlowServer : public QObject
{
public:
    explicit SlowServer(const QByteArray &content)
        : m_content(content)
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        connect(&m_server, &QTcpServer::newConnection, this, &SlowServer::onConnection);
    }

    QString url() const { return u"http://127.0.0.1:%1/a.wfp"_s.arg(m_server.serverPort()); }

    int resumed = 0; // requests from somewhere in the middle

private:
    static constexpr qint64 step = 16'000; // bytes

    void onConnection()
    {
        QTcpSocket *const socket = m_server.nextPendingConnection();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, request = QByteArray()]() mutable {
            request += socket->readAll();
            if (request.endsWith("\r\n\r\n"))
                answer(*socket, request.toLower());
        });
    }

    void answer(QTcpSocket &socket, const QByteArray &request)
    {
        constexpr QByteArrayView range = "range: bytes=";
        const qint64 from
            = request.sliced(request.indexOf(range) + range.size()).split('-').first().toLongLong();
        const qint64 left = m_content.size() - from;
        if (left <= 0) {
            socket.write(
                "HTTP/1.1 416 Range Not Satisfiable\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            socket.disconnectFromHost();
            return;
        }
        resumed += from > 0;
        socket.write("HTTP/1.1 206 Partial Content\r\nConnection: close\r\nContent-Length: "
            + QByteArray::number(left) + "\r\n\r\n");
        auto *const pace = new QTimer(&socket);
        connect(pace, &QTimer::timeout, &socket, [this, &socket, at = from]() mutable {
            if (socket.bytesToWrite() > step)
                return;
            socket.write(m_content.mid(at, step));
            at += step;
            if (at >= m_content.size())
                socket.disconnectFromHost();
        });
        pace->start(1);
    }

    const QByteArray m_content;
    QTcpServer m_server;
};

class KilledDownload : public testing::Test
{
protected:
    // Lets the program run for so long, then kills it. True when it ended by itself before.
    bool runFor(int milliseconds)
    {
        QProcess program;
        QEventLoop loop;
        connectEnd(program, loop);
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        program.start(QStringLiteral(PLUM_FETCH), {server.url(), files.folder() + u"/a.wfp"_s});
        loop.exec();
        const bool ended = program.state() == QProcess::NotRunning;
        program.kill();
        program.waitForFinished();
        if (ended) {
            EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
            EXPECT_EQ(program.exitCode(), 0);
        }
        return ended;
    }

    static void connectEnd(QProcess &program, QEventLoop &loop)
    {
        QObject::connect(&program, &QProcess::finished, &loop, &QEventLoop::quit);
    }

    // Whatever has the target's name is the whole content, and every partial file is a beginning of it.
    void expectNothingWrong(bool hasEnded)
    {
        EXPECT_TRUE(!hasEnded || QFileInfo::exists(files.folder() + u"/a.wfp"_s));
        for (const QString &name : names()) {
            const QByteArray bytes = files.read(name);
            const bool isRight = name == "a.wfp"_L1 ? bytes == content
                : name.endsWith(".dl"_L1)           ? content.startsWith(bytes)
                                                    : true;
            EXPECT_TRUE(isRight) << name.toStdString();
        }
    }

    QStringList names() const { return QDir(files.folder()).entryList(QDir::Files | QDir::Hidden); }
    bool isComplete() const { return QFileInfo::exists(files.folder() + u"/a.wfp"_s); }

    void clear() const
    {
        for (const QString &name : names())
            QFile::remove(files.folder() + u'/' + name);
    }

    const QByteArray content = [] {
        QByteArray bytes(2'000'003, Qt::Uninitialized);
        QRandomGenerator(5).generate(bytes.begin(), bytes.end());
        return bytes;
    }();
    TemporaryFiles files;
    SlowServer server{content};
};

} // namespace

TEST_F(KilledDownload, IsByteIdenticalAfterTwoHundredKillsAtRandomMoments)
{
    constexpr int kills = 200;
    constexpr int patience = 60'000; // milliseconds
    QElapsedTimer wholeLife;
    wholeLife.start();
    ASSERT_TRUE(runFor(patience));
    const auto longestLife = static_cast<int>(std::min<qint64>(wholeLife.elapsed(), 300));
    clear();

    Dice dice(11);
    int killed = 0;
    while (killed < kills && !HasFailure()) {
        const bool hasEnded = runFor(dice.below(longestLife));
        killed += !hasEnded;
        expectNothingWrong(hasEnded);
        if (isComplete())
            clear();
    }
    EXPECT_TRUE(runFor(patience));
    expectNothingWrong(true);
    EXPECT_GT(server.resumed, kills / 10); // otherwise nothing was put to the test
}
