#include "platform/privileges.h"

#include <unistd.h>

namespace plum {

bool isAllPowerful()
{
    return geteuid() == 0;
}

} // namespace plum
