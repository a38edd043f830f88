#pragma once

#include "support/printers.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>
#include <functional>

namespace plum::test {

// How a run of plumkit ended.
struct KitRun
{
    int status = -1; // -1 when it did not end by itself
    QString output;
    QString errors;
};

// Runs plumkit without a display. `whileRunning` is called once it has started. The cache is in a folder of
// its own where none is given.
inline KitRun runKit(const QStringList &arguments, const std::function<void(QProcess &)> &whileRunning = {},
    const QString &cacheFolder = {})
{
    constexpr int patience = 60'000; // milliseconds
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    const QTemporaryDir runtimeFolder; // Qt complains about one that is not the user's alone
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder.path());
    // What a run that failed leaves behind is not for the user's own cache.
    environment.insert(
        QStringLiteral("XDG_CACHE_HOME"), cacheFolder.isEmpty() ? runtimeFolder.path() : cacheFolder);
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PLUM_KIT), arguments);
    if (whileRunning && process.waitForStarted(patience))
        whileRunning(process);
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
        QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError())};
}

} // namespace plum::test
