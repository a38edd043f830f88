#pragma once

#include "engine/edition2/program.h"
#include "engine/editions/run_observer.h"

#include <QElapsedTimer>
#include <QHash>
#include <QStringList>

namespace plum::edition2 {

// What the runner has to know in order to tell of its lines: how they are written, and whether they follow
// each other too fast. Of lines that only compute, so many are told of in each stretch of time that telling
// costs a run hardly anything; the others are counted.
class RunTelling
{
public:
    void keepText(const QString &path, const QStringList &lines) { m_texts.insert(path, lines); }

    // A line of a file, from 1.
    QString text(const QString &path, int line) const { return m_texts.value(path).value(line - 1); }

    // Jumps and the bounds of blocks say nothing of their own.
    static bool isOfInterest(const Instruction &instruction)
    {
        return instruction.step != Step::Jump && instruction.step != Step::BeginTry
            && instruction.step != Step::EndTry && instruction.step != Step::End;
    }

    // The next line is not to be told of.
    bool passes(const RunObserver &observer, const Instruction &instruction);

    // So many lines that only compute may be passed over then before this is asked again, which costs more
    // than a line: the observer and the clock are asked.
    int mostToPass() const { return m_mostToPass; }

    void notePassed(qint64 lines) { m_passed += lines; }

    void begin(RunObserver &observer, const QString &keyword, const Program &program,
        const Instruction &instruction);

    // The number of the next field of the line that has begun.
    int nextField() { return m_fields++; }

private:
    QHash<QString, QStringList> m_texts;
    QElapsedTimer m_sinceRefill;
    int m_allowance = 0;
    qint64 m_passed = 0;
    int m_mostToPass = 1;
    int m_fields = 0;
};

} // namespace plum::edition2
