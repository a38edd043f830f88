#pragma once

#include "engine/run_state.h"
#include "sheet/sheet.h"

#include <QString>

namespace plum {

// What an app was granted, for the runs of its script.
struct GrantedLimit final : RunLimit
{
    QString keyword;
    Sheet sheet;
};

} // namespace plum
