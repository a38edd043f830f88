#include "engine/edition2/parser.h"
#include "support/script_bench.h"

#include <algorithm>

// A text as a script of edition 2: reading it always ends, every mistake has its place, and what could be
// read is printed to a text that means the same.

using namespace plum;
using namespace plum::edition2;

namespace {

constexpr size_t maxSize = 8192;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static recording::ScriptBench bench;
    static const ScriptVocabulary vocabulary = bench.system.vocabulary();
    const QString text = QString::fromUtf8(
        reinterpret_cast<const char *>(data), static_cast<qsizetype>(std::min(size, maxSize)));
    const Parsed parsed = parse(text, vocabulary);
    const QStringList lines = text.split(u'\n');
    for (const Mistake &mistake : parsed.mistakes) {
        if (mistake.at.line < 1 || mistake.at.line > lines.size() || mistake.at.column < 1
            || mistake.at.column > lines[mistake.at.line - 1].size() + 1)
            qFatal("a mistake has no place in the text");
    }
    if (!parsed.mistakes.isEmpty())
        return 0;
    const Parsed again = parse(print(parsed.tree), vocabulary);
    if (!again.mistakes.isEmpty() || !(again.tree == parsed.tree))
        qFatal("a printed tree means something else");
    return 0;
}
