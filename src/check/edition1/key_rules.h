#pragma once

#include "check/edition1/argument_pieces.h"
#include "check/edition1/script_line.h"
#include "check/findings/report.h"

#include <QMap>

namespace plum::edition1 {

// What a key's name sends: edition 1 knows fewer keys than its table has rows.
void judgeKey(Report &report, int line, const Value &value);

// The keys of a line that takes a list of them.
void judgeKeys(Report &report, const ScriptLine &line, const QList<Value> &values);

// Follows keys and buttons that are pressed and released by lines of their own.
class HeldKeys
{
public:
    void take(const ScriptLine &line);

    // After the last line: what nothing releases.
    void finish(Report &report) const;

private:
    QMap<QString, int> m_pressedIn; // what, and the line that pressed it
};

} // namespace plum::edition1
