#include "support/script_bench.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

// The engine's own cost of a script line: 10,000 lines on a wait that takes no time. The same assignments
// and replacements, made directly with Qt's containers, stand beside it: what a program would spend on them.

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr int lineCount = 10'000;

QStringList repeated(const QStringList &lines)
{
    QStringList script;
    for (int line = 0; line < lineCount; ++line)
        script += lines[line % lines.size()];
    return script;
}

void runScript(benchmark::State &state, const QStringList &lines)
{
    const QStringList script = repeated(lines);
    recording::ScriptBench bench;
    bench.waiter.records = false;
    for (auto _ : state)
        bench.run(script);
    state.counters["time/line"] = benchmark::Counter(static_cast<double>(state.iterations()) * lineCount,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

const QString setLine = u"set.name \"Ann, of the mill\""_s;
const QString copyLine = u"set.who set.name"_s;
const QString templateLine = u"set.greeting Hello +?+, you are +?++(set.name+set.age)"_s;
const QString replaceLine = u"text.replace \"out\",set.greeting,\"n\",\"_\",\"\",\"\",\"no\""_s;

void set(benchmark::State &state)
{
    runScript(state, {setLine});
}

void templates(benchmark::State &state)
{
    runScript(state, {templateLine});
}

void textReplace(benchmark::State &state)
{
    runScript(state, {replaceLine});
}

void comments(benchmark::State &state)
{
    runScript(state, {u"// nothing to do"_s});
}

void mixed(benchmark::State &state)
{
    runScript(state, {setLine, u"set.age \"7\""_s, templateLine, replaceLine, copyLine});
}

// Lines of edition 2, as a script that repeats them.
void runEditionTwo(benchmark::State &state, const QByteArrayList &lines)
{
    const auto rounds = lineCount / lines.size();
    const QByteArray text = "//edition:2\nset.name \"Ann, of the mill\"\nset.n 1\nrepeat.times "
        + QByteArray::number(rounds) + '\n' + lines.join('\n') + "\nrepeat.end\n";
    const QTemporaryDir folder;
    QFile script(folder.filePath(u"some.wf"_s));
    if (!script.open(QIODevice::WriteOnly) || script.write(text) != text.size()) {
        state.SkipWithError("the script cannot be written");
        return;
    }
    script.close();
    recording::ScriptBench bench;
    for (auto _ : state) {
        bench.system.starts().prepareCommandLine(script.fileName());
        bench.system.starts().runAll();
    }
    state.counters["time/line"] = benchmark::Counter(static_cast<double>(state.iterations()) * lineCount,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void mixedEditionTwo(benchmark::State &state)
{
    runEditionTwo(state,
        {"set.name \"Ann, of the mill\"", "set.age 7", "set.greeting $\"Hello {name}, you are {age}\"",
            "text.replace out,set.greeting,\"n\",\"_\",,,no", "set.who set.name"});
}

void setEditionTwo(benchmark::State &state)
{
    runEditionTwo(state, {"set.who set.name", "set.age 7"});
}

void calcEditionTwo(benchmark::State &state)
{
    runEditionTwo(state, {"calc.set n,\"set.n + 1\""});
}

void textEditionTwo(benchmark::State &state)
{
    runEditionTwo(state, {"text.upper set.name,upper", "text.piece set.name,\",\",2,piece"});
}

// Each line is counted, also those of blocks.
void blocksEditionTwo(benchmark::State &state)
{
    runEditionTwo(state, {"repeat.times 2", "when.start set.n,is,1", "when.else", "when.end", "repeat.end"});
}

void mixedByHand(benchmark::State &state)
{
    const QString greeting = u"Hello %1, you are %2"_s;
    for (auto _ : state) {
        QHash<QString, QString> variables;
        for (int line = 0; line < lineCount; line += 5) {
            variables.insert(u"name"_s, QString(u"Ann, of the mill"_s));
            variables.insert(u"age"_s, QString(u"7"_s));
            variables.insert(
                u"greeting"_s, greeting.arg(variables.value(u"name"_s), variables.value(u"age"_s)));
            variables.insert(
                u"out"_s, variables.value(u"greeting"_s).replace(u"n"_s, u"_"_s, Qt::CaseInsensitive));
            variables.insert(u"who"_s, variables.value(u"name"_s));
        }
        benchmark::DoNotOptimize(variables);
    }
    state.counters["time/line"] = benchmark::Counter(static_cast<double>(state.iterations()) * lineCount,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK(mixed)->Unit(benchmark::kMillisecond);
BENCHMARK(mixedEditionTwo)->Unit(benchmark::kMillisecond);
BENCHMARK(mixedByHand)->Unit(benchmark::kMillisecond);
BENCHMARK(setEditionTwo)->Unit(benchmark::kMillisecond);
BENCHMARK(calcEditionTwo)->Unit(benchmark::kMillisecond);
BENCHMARK(textEditionTwo)->Unit(benchmark::kMillisecond);
BENCHMARK(blocksEditionTwo)->Unit(benchmark::kMillisecond);
BENCHMARK(set)->Unit(benchmark::kMillisecond);
BENCHMARK(templates)->Unit(benchmark::kMillisecond);
BENCHMARK(textReplace)->Unit(benchmark::kMillisecond);
BENCHMARK(comments)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
