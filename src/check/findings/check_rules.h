#pragma once

#include "check/findings/finding.h"

#include <QStringView>

#include <span>

namespace plum {

// What the checker looks for. A script switches a rule off for its next line with `//check:off rule`.
struct CheckRule
{
    QStringView id;
    Severity severity;
    QStringView title; // one sentence for lists of rules
};

// All rules; docs/checks.md has a section for each.
std::span<const CheckRule> checkRules();

// The rule with this id; null when there is none.
const CheckRule *checkRule(QStringView id);

} // namespace plum
