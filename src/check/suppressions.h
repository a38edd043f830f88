#pragma once

#include "check/findings/report.h"

#include <QStringList>

namespace plum {

// `//check:off rule rule` switches rules off for the next line.
void readSuppressions(const QStringList &lines, Report &report);

} // namespace plum
