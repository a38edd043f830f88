#pragma once

#include <QString>

#include <span>
#include <vector>

namespace plum::reference {

struct Inflated
{
    QString message; // of the error; empty when there was none
    std::vector<quint8> bytes; // what came out before the end or the error
    std::vector<qint64> progress; // input bytes used after each block
};

// DEFLATE and Deflate64 decoded in the plainest way, one bit and one byte at a time, as a measure for the
// fast decoder: it has the same results, the same errors and the same output before them.
Inflated inflate(std::span<const quint8> input, qint64 outputSize, bool deflate64);

} // namespace plum::reference
