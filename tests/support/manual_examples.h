#pragma once

#include "support/script_bench.h"
#include "support/surroundings.h"
#include "support/temporary_files.h"

#include <QStringList>

#include <optional>

namespace plum::recording {

// One script of the manual. Around it, HTML comments say what it finds and does:
//
//   <!-- given: clipboard some text          what is there before, in the words of surroundings.h
//        does: mouse 2 ; mouse 4             all events but the pauses before lines, in order
//        shows: Ann | Bob                    in edition 2: its tips, before the block
//        error: 2:14: reason -->             in edition 2: what is wrong, the first line asking for it
//   ```plum
//   mouse.l_down
//   ```
//   <!-- shows: name = value -->             in edition 1: a variable afterwards, \r and \n written so
//
// A block "plum error" is a script of edition 1 that ends with a run-time error.
struct ManualExample
{
    int line = 0; // of the document, counted from 1
    bool isError = false;
    QStringList script; // in edition 2 with the line that asks for it
    QStringList given;
    std::optional<QStringList> does;
    QStringList shows;
    QString error;
};

enum class ManualPage {
    Edition1, // docs/edition-1.md
    Edition2, // docs/scripting.md
};

// All of a page, in its order.
const QList<ManualExample> &manualExamples(ManualPage page = ManualPage::Edition1);

// A bench whose surroundings an example's "given" lines arrange.
class ExampleBench : public ScriptBench
{
public:
    explicit ExampleBench(const ManualExample &example);

    // Runs the example as a script of edition 2, answers its questions and closes its tips. The first
    // mistake, as "line:column: reason"; empty without one.
    QString runToTheEnd(const QStringList &script);

    // All events but the pauses, and the question of the bench.
    QStringList happened() const;

    QStringList answers; // to the questions of the example, one after the other; those that lack are given up

private:
    test::TemporaryFiles m_files;
};

} // namespace plum::recording
