#pragma once

#include "archive/bit_input.h"
#include "archive/inflate.h"
#include "archive/inflate_tables.h"

namespace plum {

// The decoding tables of a stream. Those of the fixed codes are built when they are first needed.
struct InflateTables
{
    LiteralTable literals;
    DistanceTable distances;
    CodeLengthTable codeLengths;

    struct Fixed
    {
        LiteralTable literals;
        DistanceTable distances;
    };
    std::unique_ptr<Fixed> fixed;
    bool fixedAreDeflate64 = false;
};

// Decodes one stream.
class InflateDecoder
{
public:
    InflateDecoder(const Inflater::Stream &stream, InflateTables &tables);

    Inflater::Result run();

private:
    enum class Step { Symbol, EndOfBlock, Error };

    InflateOutcome blocks();
    InflateOutcome storedBlock();
    InflateOutcome fixedBlock();
    InflateOutcome dynamicBlock();
    InflateOutcome readCodeLengths(std::span<quint8> lengths);

    InflateOutcome symbols(const LiteralTable &literals, const DistanceTable &distances);
    Step manySymbols(const LiteralTable &literals, const DistanceTable &distances);
    template <bool Deflate64> Step innerLoop(const LiteralTable &literals, const DistanceTable &distances);
    template <bool Deflate64>
    Step innerLoopWithBmi2(const LiteralTable &literals, const DistanceTable &distances);
    Step oneSymbol(const LiteralTable &literals, const DistanceTable &distances);
    bool readyForMany();

    Step putLiteral(quint8 byte);
    Step putCopy(qint64 length, qint64 distance);
    Step fail(InflateOutcome outcome);

    qint64 room() const { return m_stream.outputSize - m_windowOffset - (m_out - m_window.data()); }
    bool deliver();
    bool slide();

    const Inflater::Stream &m_stream;
    InflateTables &m_tables;
    BitInput m_input;
    InflateOutcome m_outcome = InflateOutcome::Done; // of the step that failed

    std::span<quint8> m_window;
    quint8 *m_windowEnd;
    quint8 *m_out; // where the next byte goes
    quint8 *m_kept; // up to here, bytes were delivered
    qint64 m_windowOffset = 0; // of the window's beginning in the output
    bool m_writeFailed = false;
};

} // namespace plum
