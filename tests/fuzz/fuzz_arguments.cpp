#include "engine/run_time_error.h"
#include "support/script_bench.h"

#include <algorithm>
#include <array>

// Argument texts with every separator and index: whatever the text, there is a value or a run-time error, and
// the same one each time.
//
// Byte 0: bit 0 the flag for unknown variables, bits 1 and 2 the separator, bits 3 to 5 the index.
// The rest: the text in UTF-8.

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr size_t maxSize = 16 * 1024;

recording::ScriptBench &bench()
{
    static recording::ScriptBench bench;
    static const bool filled = [] {
        bench.state.vardict.SetVar(u"name"_s, u"Ann"_s);
        bench.state.vardict.SetVar(u"age"_s, u"7"_s);
        bench.state.vardict.SetVar(u"slot"_s, u"+?+"_s);
        bench.state.vardict.SetVar(u"list"_s, u"x+(set.age)"_s);
        bench.state.runctx[0] = u"C:\\plum\\config\\apps\\mail\\main.wf"_s;
        bench.state.currentKeyword = u"mail"_s;
        bench.launcher.keywordBox = u"mail Ann,Bob"_s;
        bench.platform.clipboard().content = u"copied"_s;
        return true;
    }();
    Q_UNUSED(filled)
    return bench;
}

struct Outcome
{
    QString value;
    int error = 0;

    bool operator==(const Outcome &) const = default;
};

Outcome evaluate(const QString &text, const QString &separator, int index, UnknownVariable unknown)
{
    try {
        return {bench().reader.GetArg(text, separator, index, unknown), 0};
    } catch (const RunTimeError &error) {
        return {QString(), error.number()};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    static const std::array<QString, 4> separators{u","_s, u":"_s, QString(), u"+?+"_s};
    const auto unknown = static_cast<UnknownVariable>(data[0] & 1);
    const QString &separator = separators[(data[0] >> 1) & 3];
    const int index = (data[0] >> 3) & 7;
    const QString text = QString::fromUtf8(
        reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(std::min(size - 1, maxSize)));

    const Outcome first = evaluate(text, separator, index, unknown);
    if (evaluate(text, separator, index, unknown) != first)
        std::abort();
    if (first.value.contains(u"tarnwick_dou_"_s))
        std::abort();
    return 0;
}
