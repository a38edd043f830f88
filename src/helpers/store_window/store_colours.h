#pragma once

#include <QColor>

namespace plum {

// The window's colours, those of the launcher.
struct StoreColours
{
    QColor window;
    QColor text;
    QColor quiet; // text of less weight
    QColor line;
    QColor hover;
    QColor accent;
};

inline StoreColours storeColours(bool dark)
{
    if (dark)
        return {QColor(0x221d23), QColor(0xf1ebf1), QColor(0xa99dab), QColor(0x453c47), QColor(0x352d37),
            QColor(0xd78fc4)};
    return {QColor(0xfbf9fb), QColor(0x241a24), QColor(0x776a78), QColor(0xdcd3dc), QColor(0xf1e8f0),
        QColor(0x85326f)};
}

} // namespace plum
