#include "x11_test.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60'000; // milliseconds; only a test that fails waits so long

} // namespace

X11Test::X11Test(const QStringList &windowManager)
    : server({1280, 800}, windowManager)
{
    if (!server.isReady())
        return;
    server.useAsDisplay();
    qputenv("QT_QPA_PLATFORM", "xcb");
    m_application = std::make_unique<QGuiApplication>(m_argumentCount, m_arguments);
    platform = createPlatform(QCoreApplication::applicationFilePath());
}

bool X11Test::waitUntil(const std::function<bool()> &condition)
{
    constexpr int lookAgain = 5; // milliseconds
    QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        QThread::msleep(lookAgain);
    }
    return true;
}

QByteArray X11Test::run(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    server.start(process, program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; })) << program.toStdString();
    EXPECT_EQ(process.error(), QProcess::UnknownError) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QString X11Test::builtProgram(const QString &name)
{
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

} // namespace plum
