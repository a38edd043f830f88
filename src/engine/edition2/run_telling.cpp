#include "engine/edition2/run_telling.h"

#include <utility>

namespace plum::edition2 {

namespace {

constexpr int toldAtOnce = 64; // lines that only compute
constexpr qint64 refillTime = 20; // milliseconds
constexpr int passedBetweenLooks = 64; // looking at the clock costs more than a line

} // namespace

bool RunTelling::passes(const RunObserver &observer, const Instruction &instruction)
{
    if (!instruction.onlyComputes || observer.wantsEveryLine())
        return false;
    const bool mayBeDue = m_allowance == 0 && m_untilLook == 0;
    if (mayBeDue && (!m_sinceRefill.isValid() || m_sinceRefill.elapsed() >= refillTime)) {
        m_allowance = toldAtOnce;
        m_sinceRefill.start();
    }
    if (m_allowance > 0) {
        --m_allowance;
        return false;
    }
    if (m_untilLook == 0)
        m_untilLook = passedBetweenLooks;
    --m_untilLook;
    ++m_passed;
    return true;
}

void RunTelling::begin(
    RunObserver &observer, const QString &keyword, const Program &program, const Instruction &instruction)
{
    if (m_passed > 0)
        observer.linesPassed(std::exchange(m_passed, 0));
    m_untilLook = 0;
    const QString &file = program.files[instruction.file];
    m_fields = 0;
    observer.lineBegins({keyword, instruction.file == 0 ? QString() : file, instruction.at.line,
        text(file, instruction.at.line)});
}

} // namespace plum::edition2
