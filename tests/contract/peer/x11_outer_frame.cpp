#include "contract/peer/outer_frame.h"

namespace plum::contract {

QRect outerFrame(const QWidget &window)
{
    return window.frameGeometry();
}

} // namespace plum::contract
