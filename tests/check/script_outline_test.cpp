#include "check/script_check.h"
#include "check/script_outline.h"
#include "support/printers.h"
#include "support/script_bench.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

QStringList written(const QList<OutlineItem> &items, const QString &indent = {})
{
    QStringList lines;
    for (const OutlineItem &item : items) {
        lines += u"%1%2 %3-%4 at %5"_s.arg(indent, item.name)
                     .arg(item.firstLine)
                     .arg(item.lastLine)
                     .arg(item.column);
        lines += written(item.children, indent + u"  "_s);
    }
    return lines;
}

QStringList outline(const QString &script, Edition edition)
{
    const ScriptVocabulary vocabulary = recording::ScriptBench().system.vocabulary();
    const QStringList lines = script.split(edition == Edition::One ? u"\r\n"_s : u"\n"_s);
    const ScriptNames names(ScriptCheck(vocabulary).examine(script.toUtf8()).names, lines);
    return written(outlineOf(script, lines, edition, names, vocabulary));
}

TEST(ScriptOutline, hasThePartsBlocksAndVariablesOfEdition2)
{
    EXPECT_EQ(
        outline(u"//edition:2\nset.n 1\nrepeat.times 2\n    set.n 2\n    set.m 3\nrepeat.end\n"
                "part.start greet,who\n    try.start\n        os.tips set.who\n    try.end\npart.end\n"_s,
            Edition::Two),
        QStringList({u"n 2-2 at 5"_s, u"repeat.times 2 3-6 at 1"_s, u"  m 5-5 at 9"_s, u"greet 7-11 at 12"_s,
            u"  who 7-7 at 18"_s, u"  try.start 8-10 at 5"_s}));
}

TEST(ScriptOutline, hasTheLoopsAndVariablesOfEdition1)
{
    EXPECT_EQ(outline(u"set.n \"1\"\r\nwhile.start \"count\",\"3\"\r\nmouse.get_xy \"p\"\r\nwhile.end\r\n"_s,
                  Edition::One),
        QStringList({u"n 1-1 at 5"_s, u"while.start \"count\",\"3\" 2-4 at 1"_s, u"  p 3-3 at 15"_s}));
}

} // namespace
} // namespace plum
