#include "commands/javascript_call.h"
#include "engine/text_files.h"
#include "http/http_text.h"
#include "http/loaded_http_client.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/linux/loaded_javascript.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// Peak of this process's resident memory, in MB.
double peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ')[1].toDouble() / 1024;
    }
    return 0;
}

// One line: what was measured, how long it took in ms, the peak of memory in MB above the start, the length
// of the result.
void report(const char *what, const QElapsedTimer &timer, double before, qsizetype length)
{
    std::printf("%s %.3f %.0f %lld\n", what, static_cast<double>(timer.nsecsElapsed()) / 1e6,
        peakMemory() - before, static_cast<long long>(length));
}

} // namespace

// usage: measure_files joined|reversed|line FILE, get URL, or js
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString &task = arguments.value(1);
    const QString &subject = arguments.value(2);

    plum::FilePaths paths(u"/plum/plum"_s);
    plum::LinuxTextCodec codec;
    const plum::TextFiles files(paths, codec);
    const double before = peakMemory();
    QElapsedTimer timer;
    timer.start();
    if (task == "joined"_L1) {
        const QString text = files.ReadAllText(subject, plum::ReadAllMode::Joined);
        report("joined", timer, before, text.size());
    } else if (task == "reversed"_L1) {
        const QString text = files.ReadAllText(subject, plum::ReadAllMode::ReversedLines);
        report("reversed", timer, before, text.size());
    } else if (task == "line"_L1) {
        const QString text = files.ReadLine(subject, 1'000'000);
        report("line", timer, before, text.size());
    } else if (task == "get"_L1) {
        plum::LoadedHttpClient client;
        const QString text = plum::HttpGetText(client, codec, subject);
        report("get", timer, before, text.size());
    } else if (task == "js"_L1) {
        plum::LoadedJavaScript javaScript;
        const QString script = u"function sum(a, b) { return a + b; }"_s;
        const QString first = plum::EvalJs(javaScript, script, u"sum"_s, u"1,2"_s);
        report("first", timer, before, first.size());
        for (int i = 0; i < 20; ++i) {
            timer.restart();
            const QString next = plum::EvalJs(javaScript, script, u"sum"_s, u"1,2"_s);
            report("next", timer, before, next.size());
        }
    }
}
