#pragma once

#include "check/edition1/argument_pieces.h"
#include "check/findings/report.h"

namespace plum::edition1 {

// What a key's name sends: edition 1 knows fewer keys than its table has rows.
void judgeKey(Report &report, int line, const Value &value);

} // namespace plum::edition1
