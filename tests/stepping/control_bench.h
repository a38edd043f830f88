#pragma once

#include "engine/editions/script_error.h"
#include "stepping/run_control.h"
#include "support/script_bench.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <functional>

namespace plum::test {

using namespace Qt::StringLiterals;

// Scripts on the recording backend, held by a RunControl.
class ControlBench : public testing::Test
{
protected:
    using Going = RunControl::Going;

    ControlBench() { bench.state.observer = &control; }

    void run1(const QStringList &lines) { bench.run(lines); }

    // A script of edition 2; its first line is line 2.
    void run2(const QByteArray &lines)
    {
        const QString path = files.write(u"test.wf"_s, "//edition:2\n" + lines);
        ASSERT_TRUE(bench.system.starts().prepareFile(path));
        try {
            bench.system.starts().runAll();
        } catch (const ScriptError &failure) {
            error = failure.mistakes().front().reason;
        }
    }

    // "cause FILE:line"
    QString placeOf(const RunControl::Hold &hold) const
    {
        constexpr std::array words{"entry", "breakpoint", "step", "pause", "error"};
        const RunPlace place = hold.run.place(0);
        const QString file = place.file.isEmpty() ? QString() : place.file + u':';
        return QString::fromLatin1(words[static_cast<std::size_t>(hold.cause)]) + u' ' + file
            + QString::number(place.line);
    }

    recording::ScriptBench bench;
    TemporaryFiles files;
    QStringList held;
    QString error;

    // How the run goes on from each place where it is held; `otherwise` from all others.
    std::deque<Going> goings;
    Going otherwise = Going::On;
    std::function<void(const RunControl::Hold &hold)> onHold;

    RunControl control{[this](const RunControl::Hold &hold) {
        held += placeOf(hold);
        if (onHold)
            onHold(hold);
        if (goings.empty())
            return otherwise;
        const Going going = goings.front();
        goings.pop_front();
        return going;
    }};
};

} // namespace plum::test
