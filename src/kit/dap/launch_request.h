#pragma once

#include "kit/dap/request_arguments.h"

#include <QList>

#include <utility>

namespace plum::kit {

// Which script a debugger wants to be run, and how.
struct LaunchRequest
{
    QString program; // an absolute path
    bool stopsOnEntry = false;
    bool isHeld = true; // false: breakpoints and errors do not count
    bool isDry = false; // on a desktop that is made up
    std::optional<double> timeout = {}; // seconds, in which the time does not count that the run is held
    QList<std::pair<QString, QString>> variables = {};
    QStringList answers = {}; // for a dry run
    QString typed = {}; // the same

    static LaunchRequest from(const RequestArguments &arguments);
};

} // namespace plum::kit
