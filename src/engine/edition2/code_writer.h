#pragma once

#include "engine/edition2/fields.h"
#include "engine/edition2/program.h"

namespace plum::edition2 {

// Turns trees into the instructions of a program whose parts are known.
class CodeWriter
{
public:
    using Fail = std::function<void(int file, Position at, const QString &reason)>;

    CodeWriter(Program &program, const LinkNeeds &needs, Fail fail);

    // Everything outside parts.
    void writeScript(const Tree &tree);
    void writePart(const Section &section, Part &part);

    static Operand operandOf(const Value &value);

private:
    // A repetition around the lines that are being written.
    struct Repetition
    {
        int next = 0; // where the next pass begins
        int loopsInside = 0;
        int loopsOutside = 0;
        int tries = 0;
        std::vector<int> breaks = {}; // jumps that lead behind it
    };

    int here() const { return int(m_program.instructions.size()); }
    Instruction &add(Step step, const Line &line);
    int addJump(int target, const Line &line);
    void land(int jump);

    void write(const std::vector<Statement> &statements);
    void write(const Statement &statement);
    void writeLine(const Line &line);
    void writeCommand(const Line &line);
    void writePartRun(const Line &line);
    void writeWhen(const Statement &block);
    void writeWhile(const Statement &block);
    void writeCounted(const Statement &block, Step begin);
    void writeTry(const Statement &block);
    int writeCondition(const Line &line);
    void writeBody(const Section &section, Repetition repetition, int exit);

    BoundLine bind(const Line &line) const;
    static Operand operandOf(const BoundValue &bound);

    Program &m_program;
    const LinkNeeds &m_use;
    Fail m_fail;
    int m_file = 0;
    int m_loops = 0;
    int m_tries = 0;
    std::vector<Repetition> m_repetitions;
};

} // namespace plum::edition2
