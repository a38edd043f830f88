#include "archive/inflate_decoder.h"

#include "archive/match_copy.h"

#include <algorithm>
#include <cstring>

namespace plum {

namespace {

constexpr qint64 longestCopy = 258;
constexpr qint64 outputSlack = longestCopy + 3 * copyUnit; // what one pass of the inner loop may write
constexpr double worthJoining = 0.2; // a smaller share makes jumps unforeseeable and saves little
constexpr qint64 inputSlack = 24; // what it may read

qint64 lengthOf(DecodeEntry entry, quint64 bits)
{
    return static_cast<qint64>(decode::shortestLength + (entry >> 24) + decode::extra(entry, bits));
}

qint64 distanceOf(DecodeEntry entry, quint64 bits)
{
    return static_cast<qint64>(decode::value(entry) + decode::extra(entry, bits));
}

// The share of codes, from 0 to 1, that will be joined with their neighbour.
double joinedShare(std::span<const quint8> codeLengths)
{
    std::array<double, deflate::longestCode + 1> literals{};
    std::array<double, deflate::longestCode + 1> all{};
    for (size_t symbol = 0; symbol < codeLengths.size(); ++symbol) {
        all[codeLengths[symbol]] += 1;
        literals[codeLengths[symbol]] += symbol < deflate::endOfBlock ? 1 : 0;
    }
    double share = 0;
    for (size_t first = 1; first < literalPrimaryBits; ++first) {
        for (size_t second = 1; first + second <= literalPrimaryBits; ++second)
            share += literals[first] * all[second] / static_cast<double>(1 << (first + second));
    }
    return share;
}

// Always writes two bytes, of which the second may be one too many.
inline quint8 *putLiterals(quint8 *out, DecodeEntry entry)
{
    qToLittleEndian(static_cast<quint16>(decode::value(entry)), out);
    return out + decode::codeBits(entry);
}

} // namespace

InflateDecoder::InflateDecoder(const Inflater::Stream &stream, InflateTables &tables)
    : m_stream(stream)
    , m_tables(tables)
    , m_input(stream.input, stream.inputSize)
    , m_window(stream.output.window())
    , m_windowEnd(m_window.data() + m_window.size())
    , m_out(m_window.data())
    , m_kept(m_out)
{
}

Inflater::Result InflateDecoder::run()
{
    InflateOutcome outcome = blocks();
    if (m_input.readFailed())
        outcome = InflateOutcome::ReadFailed;
    if (!deliver())
        outcome = InflateOutcome::WriteFailed;
    return {outcome, m_windowOffset + (m_out - m_window.data())};
}

InflateOutcome InflateDecoder::blocks()
{
    bool isLast = false;
    while (!isLast) {
        isLast = m_input.take(1) == 1;
        InflateOutcome outcome = InflateOutcome::DataError;
        switch (m_input.take(2)) {
        case 0:
            outcome = storedBlock();
            break;
        case 1:
            outcome = fixedBlock();
            break;
        case 2:
            outcome = dynamicBlock();
            break;
        default:
            break;
        }
        if (outcome != InflateOutcome::Done)
            return outcome;
        if (m_stream.afterBlock)
            m_stream.afterBlock(std::min(m_input.position(), m_stream.inputSize));
    }
    return InflateOutcome::Done;
}

InflateOutcome InflateDecoder::storedBlock()
{
    m_input.alignToByte();
    if (m_input.remaining() < 4)
        return InflateOutcome::InputDepleted;
    const quint32 lengths = m_input.take(32);
    qint64 length = lengths & 0xFFFF;
    if ((lengths >> 16 ^ 0xFFFF) != length)
        return InflateOutcome::InvalidBlockSize;
    if (m_input.remaining() < length)
        return InflateOutcome::InputDepleted;
    if (room() < length)
        return InflateOutcome::OutputOverflow;
    while (length > 0) {
        if (m_out == m_windowEnd && !slide())
            return InflateOutcome::WriteFailed;
        const auto bytes = m_input.takeBytes(std::min<qint64>(length, m_windowEnd - m_out));
        if (bytes.empty())
            return InflateOutcome::ReadFailed;
        m_out = std::ranges::copy(bytes, m_out).out;
        length -= static_cast<qint64>(bytes.size());
    }
    return InflateOutcome::Done;
}

InflateOutcome InflateDecoder::fixedBlock()
{
    if (!m_tables.fixed || m_tables.fixedAreDeflate64 != m_stream.deflate64) {
        std::array<quint8, deflate::literalSymbols> lengths;
        std::fill_n(lengths.begin(), 144, quint8{8});
        std::fill_n(lengths.begin() + 144, 112, quint8{9});
        std::fill_n(lengths.begin() + 256, 24, quint8{7});
        std::fill_n(lengths.begin() + 280, 8, quint8{8});
        std::array<quint8, deflate::distanceSymbols> distanceLengths;
        distanceLengths.fill(5);
        if (!m_tables.fixed)
            m_tables.fixed = std::make_unique<InflateTables::Fixed>();
        m_tables.fixedAreDeflate64 = m_stream.deflate64;
        if (!m_tables.fixed->literals.build(lengths, literalMeanings(m_stream.deflate64))
            || !m_tables.fixed->distances.build(distanceLengths, distanceMeanings(m_stream.deflate64)))
            return InflateOutcome::StaticOverSubscribed;
        m_tables.fixed->literals.joinLiterals();
    }
    return symbols(m_tables.fixed->literals, m_tables.fixed->distances);
}

InflateOutcome InflateDecoder::dynamicBlock()
{
    const size_t literalCount = m_input.take(5) + 257;
    const size_t distanceCount = m_input.take(5) + 1;
    const size_t codeLengthCount = m_input.take(4) + 4;

    std::array<quint8, deflate::codeLengthSymbols> codeLengths{};
    for (size_t i = 0; i < codeLengthCount; ++i)
        codeLengths[deflate::codeLengthOrder[i]] = static_cast<quint8>(m_input.take(3));
    if (!m_tables.codeLengths.build(codeLengths, codeLengthMeanings()))
        return InflateOutcome::DynamicOverSubscribed;

    std::array<quint8, deflate::literalSymbols + deflate::distanceSymbols> buffer{};
    const std::span lengths = std::span(buffer).first(literalCount + distanceCount);
    if (const auto outcome = readCodeLengths(lengths); outcome != InflateOutcome::Done)
        return outcome;
    if (!m_tables.literals.build(lengths.first(literalCount), literalMeanings(m_stream.deflate64))
        || !m_tables.distances.build(lengths.last(distanceCount), distanceMeanings(m_stream.deflate64)))
        return InflateOutcome::DynamicOverSubscribed;
    if (joinedShare(lengths.first(literalCount)) > worthJoining)
        m_tables.literals.joinLiterals();
    return symbols(m_tables.literals, m_tables.distances);
}

InflateOutcome InflateDecoder::readCodeLengths(std::span<quint8> lengths)
{
    size_t at = 0;
    while (at < lengths.size()) {
        m_input.fill();
        const DecodeEntry entry = m_tables.codeLengths.first(m_input.bits());
        if (entry == decode::invalid)
            return InflateOutcome::DataError;
        m_input.drop(decode::totalBits(entry));
        const quint32 symbol = decode::value(entry) & 0xFF;
        if (symbol < 16) {
            lengths[at++] = static_cast<quint8>(symbol);
            continue;
        }
        quint8 repeated = 0;
        size_t times = 0;
        if (symbol == 16) {
            if (at == 0)
                return InflateOutcome::NoLastLength;
            repeated = lengths[at - 1];
            times = 3 + m_input.take(2);
        } else if (symbol == 17) {
            times = 3 + m_input.take(3);
        } else {
            times = 11 + m_input.take(7);
        }
        if (times > lengths.size() - at)
            return InflateOutcome::TooManyLengths;
        std::ranges::fill(lengths.subspan(at, times), repeated);
        at += times;
    }
    return InflateOutcome::Done;
}

InflateOutcome InflateDecoder::symbols(const LiteralTable &literals, const DistanceTable &distances)
{
    for (;;) {
        Step step = Step::Symbol;
        if (readyForMany())
            step = manySymbols(literals, distances);
        if (step == Step::Symbol)
            step = oneSymbol(literals, distances);
        if (step == Step::EndOfBlock)
            return InflateOutcome::Done;
        if (step == Step::Error)
            return m_outcome;
    }
}

bool InflateDecoder::readyForMany()
{
    if (m_windowEnd - m_out < outputSlack && room() >= outputSlack) {
        if (!slide())
            return false;
    }
    return room() >= outputSlack && m_input.atHand(inputSlack);
}

// The inner loop. It runs as long as neither end is near, so nothing is checked but distances. The entry of
// the next code is looked up before what the last one said is done, so that neither waits for the other.
template <bool Deflate64>
[[gnu::always_inline]] inline InflateDecoder::Step InflateDecoder::innerLoop(
    const LiteralTable &literals, const DistanceTable &distances)
{
    BitInput::Registers in = m_input.registers();
    const quint8 *const inputEnd = m_input.pieceEnd() - inputSlack;
    quint8 *const windowStart = m_window.data();
    quint8 *out = m_out;
    quint8 *const outputEnd = out + (std::min<qint64>(m_windowEnd - out, room()) - outputSlack);
    const auto leave = [&](Step step) {
        m_input.setRegisters(in);
        m_out = out;
        return step;
    };

    in.fill();
    DecodeEntry entry = literals.first(in.bits);
    do {
        quint64 bits = in.bits; // from the entry's code on
        in.drop(entry);
        if (entry & decode::literal) {
            out = putLiterals(out, entry);
            bits = in.bits;
            entry = literals.first(bits);
            in.drop(entry);
            if (entry & decode::literal) {
                out = putLiterals(out, entry);
                bits = in.bits;
                entry = literals.first(bits);
                in.drop(entry);
                if (entry & decode::literal) {
                    out = putLiterals(out, entry);
                    in.fill();
                    entry = literals.first(in.bits);
                    continue;
                }
            }
        }
        if (entry & decode::exceptional) {
            if (entry & decode::link) {
                bits = in.bits;
                entry = literals.second(entry, bits);
                in.drop(entry);
            }
            if (entry & decode::literal) {
                out = putLiterals(out, entry);
                in.fill();
                entry = literals.first(in.bits);
                continue;
            }
            if (entry & decode::exceptional)
                return leave(entry & decode::end ? Step::EndOfBlock : fail(InflateOutcome::DataError));
        }
        *out = static_cast<quint8>(decode::value(entry));
        out += (entry & decode::literalBefore) / decode::literalBefore;
        const qint64 length = lengthOf(entry, bits);

        in.fill();
        bits = in.bits;
        entry = distances.first(bits);
        in.drop(entry);
        if (entry & decode::exceptional) {
            if (entry & decode::link) {
                bits = in.bits;
                entry = distances.second(entry, bits);
                in.drop(entry);
            }
            if (entry & decode::exceptional)
                return leave(fail(InflateOutcome::DataError));
        }
        const qint64 distance = distanceOf(entry, bits);
        if (Deflate64 && length > longestCopy) {
            leave(Step::Symbol);
            return putCopy(length, distance);
        }
        if (distance > out - windowStart)
            return leave(fail(InflateOutcome::DataError));
        entry = literals.first(in.bits);
        in.fill();
        wideCopy(out, length, distance);
        out += length;
    } while (in.next <= inputEnd && out <= outputEnd);
    return leave(Step::Symbol);
}

#ifdef __x86_64__

// Shifts by a number of bits that is not known before take a third of the instructions.
template <bool Deflate64>
[[gnu::target("bmi2")]] InflateDecoder::Step InflateDecoder::innerLoopWithBmi2(
    const LiteralTable &literals, const DistanceTable &distances)
{
    return innerLoop<Deflate64>(literals, distances);
}

InflateDecoder::Step InflateDecoder::manySymbols(const LiteralTable &literals, const DistanceTable &distances)
{
    static const bool hasBmi2 = __builtin_cpu_supports("bmi2");
    if (hasBmi2) {
        return m_stream.deflate64 ? innerLoopWithBmi2<true>(literals, distances)
                                  : innerLoopWithBmi2<false>(literals, distances);
    }
    return m_stream.deflate64 ? innerLoop<true>(literals, distances) : innerLoop<false>(literals, distances);
}

#else

InflateDecoder::Step InflateDecoder::manySymbols(const LiteralTable &literals, const DistanceTable &distances)
{
    return m_stream.deflate64 ? innerLoop<true>(literals, distances) : innerLoop<false>(literals, distances);
}

#endif

InflateDecoder::Step InflateDecoder::oneSymbol(const LiteralTable &literals, const DistanceTable &distances)
{
    if (m_input.readFailed())
        return fail(InflateOutcome::ReadFailed);
    quint64 bits = 0; // from the entry's code on
    const auto take = [&](const auto &table) {
        m_input.fill();
        bits = m_input.bits();
        DecodeEntry entry = table.first(bits);
        m_input.drop(decode::totalBits(entry));
        if ((entry & decode::exceptional) && (entry & decode::link)) {
            bits = m_input.bits();
            entry = table.second(entry, bits);
            m_input.drop(decode::totalBits(entry));
        }
        return entry;
    };

    DecodeEntry entry = take(literals);
    if (entry & decode::literal) {
        const Step step = putLiteral(static_cast<quint8>(decode::value(entry)));
        const bool isPair = decode::codeBits(entry) == 2;
        return step == Step::Symbol && isPair ? putLiteral(static_cast<quint8>(decode::value(entry) >> 8))
                                              : step;
    }
    if (entry & decode::exceptional)
        return entry & decode::end ? Step::EndOfBlock : fail(InflateOutcome::DataError);
    if (entry & decode::literalBefore) {
        if (const Step step = putLiteral(static_cast<quint8>(decode::value(entry))); step != Step::Symbol)
            return step;
    }
    const qint64 length = lengthOf(entry, bits);
    entry = take(distances);
    if (entry & decode::exceptional)
        return fail(InflateOutcome::DataError);
    return putCopy(length, distanceOf(entry, bits));
}

InflateDecoder::Step InflateDecoder::putLiteral(quint8 byte)
{
    if (room() == 0)
        return fail(InflateOutcome::OutputOverflow);
    if (m_out == m_windowEnd && !slide())
        return fail(InflateOutcome::WriteFailed);
    *m_out++ = byte;
    return Step::Symbol;
}

InflateDecoder::Step InflateDecoder::putCopy(qint64 length, qint64 distance)
{
    if (distance > m_out - m_window.data())
        return fail(InflateOutcome::DataError);
    if (length > room())
        return fail(InflateOutcome::OutputOverflow);
    while (length > 0) {
        if (m_out == m_windowEnd && !slide())
            return fail(InflateOutcome::WriteFailed);
        const qint64 part = std::min<qint64>(length, m_windowEnd - m_out);
        exactCopy(m_out, part, distance);
        m_out += part;
        length -= part;
    }
    return Step::Symbol;
}

InflateDecoder::Step InflateDecoder::fail(InflateOutcome outcome)
{
    m_outcome = outcome;
    return Step::Error;
}

bool InflateDecoder::deliver()
{
    const std::span<const quint8> bytes(m_kept, m_out);
    m_kept = m_out;
    m_writeFailed = m_writeFailed || (!bytes.empty() && !m_stream.output.take(bytes));
    return !m_writeFailed;
}

// Delivers what is in the window and makes room in it, keeping as much as a distance can reach.
bool InflateDecoder::slide()
{
    if (!deliver())
        return false;
    const qint64 history = std::min<qint64>(deflate::farthest, m_out - m_window.data());
    m_windowOffset += m_out - history - m_window.data();
    std::memmove(m_window.data(), m_out - history, static_cast<size_t>(history));
    m_out = m_window.data() + history;
    m_kept = m_out;
    return true;
}

} // namespace plum
