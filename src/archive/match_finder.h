#pragma once

#include <QByteArrayView>

#include <vector>

namespace plum {

// One step of a text that is told by what stood before it: a byte, or a repetition of earlier bytes.
struct Step
{
    quint16 length; // 0: a byte
    quint16 value; // the byte, or how far back the repetition begins
};

// Tells `bytes` in steps that DEFLATE can say: 3 to 258 bytes from at most 32768 bytes back.
std::vector<Step> stepsOf(QByteArrayView bytes);

} // namespace plum
