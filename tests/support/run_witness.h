#pragma once

#include "engine/editions/run_observer.h"

#include <QStringList>

#include <array>

namespace plum::test {

// Writes everything down that it hears of runs, an entry a line.
class RunWitness final : public RunObserver
{
public:
    void runBegins(const QString &script) override { scripts += script; }
    void lineBegins(const RunLine &line) override
    {
        heard += QStringLiteral("%1%2 %3").arg(line.file).arg(line.number).arg(line.text.trimmed());
    }
    void fieldRead(int index, const QString &value) override
    {
        heard += QStringLiteral("field %1 %2").arg(index).arg(value);
    }
    void variableSet(const QString &name, const QString &value) override
    {
        heard += QStringLiteral("set %1 %2").arg(name, value);
    }
    void answered(const QString &answer) override { heard += QStringLiteral("answer ") + answer; }
    void refused(const QString &sentence) override { heard += QStringLiteral("refused ") + sentence; }
    void lineEnds(LineEnd how, const QString &reason) override
    {
        constexpr std::array words{"done", "rests", "failed", "stopped"};
        heard += QLatin1StringView(words[static_cast<std::size_t>(how)])
            + (reason.isEmpty() ? QString() : QStringLiteral(": ") + reason);
    }
    void linesPassed(qint64 count) override { passed += count; }
    bool wantsEveryLine() const override { return wantsAll; }

    bool wantsAll = false;
    QStringList scripts;
    QStringList heard;
    qint64 passed = 0;
};

} // namespace plum::test
