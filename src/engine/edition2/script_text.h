#pragma once

#include <QByteArray>
#include <QString>

namespace plum::edition2 {

struct Decoded
{
    QString text; // without a mark
    int badLine = 0; // the first line that is no UTF-8, counted from 1; 0 when all are
};

// A script of edition 2 is UTF-8, with or without a mark.
Decoded decode(const QByteArray &bytes);

} // namespace plum::edition2
