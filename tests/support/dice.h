#pragma once

#include <QString>

#include <random>

namespace plum::recording {

// Random choices for property tests; the same for the same seed on every system.
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_engine(seed)
    {
    }

    // 0 to `sides` - 1.
    int below(int sides) { return static_cast<int>(m_engine() % static_cast<quint32>(sides)); }
    bool oneIn(int sides) { return below(sides) == 0; }

    QString text(const QString &alphabet, int maxLength)
    {
        QString text;
        for (int left = below(maxLength + 1); left > 0; --left)
            text += alphabet[below(static_cast<int>(alphabet.size()))];
        return text;
    }

private:
    std::mt19937 m_engine;
};

} // namespace plum::recording
