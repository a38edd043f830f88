#include "engine/edition2/run_telling.h"

#include <algorithm>
#include <utility>

namespace plum::edition2 {

namespace {

constexpr int toldAtOnce = 64; // lines that only compute
constexpr qint64 refillTime = 20; // milliseconds
// Between two looks at the clock, which costs more than a line: few at first, since lines may be slow ones.
constexpr int firstPassed = 8;
constexpr int mostPassed = 256;

} // namespace

bool RunTelling::passes(const RunObserver &observer, const Instruction &instruction)
{
    if (!instruction.onlyComputes || observer.wantsEveryLine())
        return false;
    if (m_allowance == 0) {
        m_mostToPass = std::min(2 * m_mostToPass, mostPassed);
        if (!m_sinceRefill.isValid() || m_sinceRefill.elapsed() >= refillTime) {
            m_allowance = toldAtOnce;
            m_mostToPass = firstPassed;
            m_sinceRefill.start();
        }
    }
    if (m_allowance == 0)
        return true;
    --m_allowance;
    return false;
}

void RunTelling::begin(
    RunObserver &observer, const QString &keyword, const Program &program, const Instruction &instruction)
{
    if (m_passed > 0)
        observer.linesPassed(std::exchange(m_passed, 0));
    const QString &file = program.files[instruction.file];
    m_fields = 0;
    observer.lineBegins({keyword, instruction.file == 0 ? QString() : file, instruction.at.line,
        text(file, instruction.at.line)});
}

} // namespace plum::edition2
