#pragma once

#include <QElapsedTimer>

#include <algorithm>

namespace plum::test {

// The least time, in milliseconds, of some runs of `action`; one run where that takes less than `enough`. A
// machine that stands still for a moment makes a run longer, never shorter.
template <typename Action> qint64 leastTime(qint64 enough, Action action)
{
    constexpr int runs = 5;
    QElapsedTimer time;
    time.start();
    action();
    qint64 least = time.elapsed();
    for (int run = 1; run < runs && least >= enough; ++run) {
        time.restart();
        action();
        least = std::min(least, time.elapsed());
    }
    return least;
}

} // namespace plum::test
