#pragma once

#include "check/findings/report.h"

namespace plum {

// A path or program that exists on one machine or one system alone: one-machine, one-system.
void judgePlace(Report &report, int line, int column, const QString &text);

// A password that stands in the script: secret.
void judgeSecret(Report &report, int line, int column, const QString &variable, const QString &text);

} // namespace plum
