#pragma once

#include "picker/picked_lines.h"

#include <QStringList>

#include <optional>

namespace plum::kit {

// What `plumkit pick` is asked for.
struct PickOptions
{
    std::optional<PickedLine> line; // written alone
    Edition edition = Edition::Two;
    QString folder; // that gets a picture
    bool wantsHelp = false;
};

// `problem` says what is wrong with the arguments; it stays empty when nothing is.
PickOptions readPickOptions(const QStringList &arguments, QString &problem);

extern const char pickUsage[];

// Shows the desktop and lets the user pick. Returns the exit status: 0 when something was taken, 2 when there
// is no desktop or the picture cannot be written, 130 when the user gave up.
int pick(int argc, char **argv, const PickOptions &options);

} // namespace plum::kit
