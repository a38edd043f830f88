#include "archive/match_finder.h"

#include <algorithm>
#include <array>

namespace plum {

namespace {

constexpr qsizetype shortest = 3;
constexpr qsizetype longest = 258;
constexpr qsizetype farthest = 32768;
constexpr qsizetype farthestOfShortest = 4096; // from farther away three single bytes are cheaper
constexpr int mostLooks = 256; // at earlier places of the same beginning
constexpr int hashBits = 15;

struct Match
{
    qsizetype length = 0;
    qsizetype distance = 0;
};

class MatchFinder
{
public:
    explicit MatchFinder(QByteArrayView bytes)
        : m_bytes(bytes)
        , m_newest(size_t{1} << hashBits, -1)
        , m_older(static_cast<size_t>(std::min(bytes.size(), farthest)), -1)
    {
    }

    // The longest repetition at `position`; all before it must have been remembered.
    Match find(qsizetype position) const
    {
        Match best;
        const qsizetype most = std::min(longest, m_bytes.size() - position);
        if (most < shortest)
            return best;
        qsizetype place = m_newest[hashAt(position)];
        for (int looks = 0; looks < mostLooks && place >= 0 && position - place <= farthest; ++looks) {
            const qsizetype length = commonLength(place, position, most);
            if (length > best.length) {
                best = {length, position - place};
                if (length == most)
                    break;
            }
            place = m_older[slot(place)];
        }
        const bool isWorthIt
            = best.length > shortest || (best.length == shortest && best.distance <= farthestOfShortest);
        return isWorthIt ? best : Match();
    }

    void remember(qsizetype position)
    {
        if (m_bytes.size() - position < shortest)
            return;
        qsizetype &newest = m_newest[hashAt(position)];
        m_older[slot(position)] = newest;
        newest = position;
    }

private:
    size_t hashAt(qsizetype position) const
    {
        const auto byte = [&](qsizetype i) { return quint32{static_cast<quint8>(m_bytes[position + i])}; };
        return (byte(0) << 16 | byte(1) << 8 | byte(2)) * 0x9E3779B1U >> (32 - hashBits);
    }

    size_t slot(qsizetype position) const { return static_cast<size_t>(position) % m_older.size(); }

    qsizetype commonLength(qsizetype one, qsizetype other, qsizetype most) const
    {
        const auto end = m_bytes.begin() + other + most;
        return std::mismatch(m_bytes.begin() + other, end, m_bytes.begin() + one).first
            - (m_bytes.begin() + other);
    }

    QByteArrayView m_bytes;
    std::vector<qsizetype> m_newest; // place of each hash
    std::vector<qsizetype> m_older; // place of the same hash before each of the last places
};

} // namespace

std::vector<Step> stepsOf(QByteArrayView bytes)
{
    MatchFinder finder(bytes);
    std::vector<Step> steps;
    Match here = finder.find(0);
    for (qsizetype position = 0; position < bytes.size();) {
        finder.remember(position);
        const Match next = finder.find(position + 1);
        if (here.length == 0 || next.length > here.length) {
            // A longer repetition begins one byte further on.
            steps.push_back({0, static_cast<quint8>(bytes[position])});
            ++position;
            here = next;
            continue;
        }
        steps.push_back({static_cast<quint16>(here.length), static_cast<quint16>(here.distance)});
        for (qsizetype i = 1; i < here.length; ++i)
            finder.remember(position + i);
        position += here.length;
        here = finder.find(position);
    }
    return steps;
}

} // namespace plum
