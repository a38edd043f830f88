#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace plum {

// What an expression comes to. Without a value, `problem` is the reason in one sentence, and `column` the
// place in the expression that it is about, counted from 1.
struct Calculation
{
    std::optional<double> value;
    QString problem;
    qsizetype column = 0;
};

// The text behind a reference such as "set.count"; nothing for one that is unknown.
using ReferencedText = std::function<std::optional<QString>(QStringView reference)>;

// Works an expression out: real numbers, references, + - * / %, the comparisons < <= > >= == != (1 or 0,
// weaker than +), parentheses, min(a,b,...), max(a,b,...), round(x) or round(x,digits) and length(reference).
// Halves round away from 0; the remainder has the sign of the divisor, so that counting in a circle works
// below 0 too. A reference used as a number has to be one: a decimal number with blanks around it at most.
Calculation calculated(QStringView expression, const ReferencedText &textOf);

// What is wrong with an expression whatever its references hold, as far as that can be known; without a
// problem when nothing is. `exists` says which references there are.
Calculation readExpression(QStringView expression, const std::function<bool(QStringView)> &exists);

// A number as scripts see it: at most 15 digits, without an exponent from 0.000001 up to below 10^15.
QString numberText(double value);

} // namespace plum
