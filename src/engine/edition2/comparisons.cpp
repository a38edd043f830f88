#include "engine/edition2/comparisons.h"

#include "engine/edition2/line_reader.h"

namespace plum::edition2 {

namespace {

// The parts of a decimal number without the zeros that change nothing.
struct Decimal
{
    bool isNegative = false;
    QStringView whole;
    QStringView fraction;

    explicit Decimal(QStringView text)
    {
        isNegative = text.startsWith(u'-');
        if (isNegative)
            text = text.sliced(1);
        const qsizetype dot = text.indexOf(u'.');
        whole = dot < 0 ? text : text.first(dot);
        fraction = dot < 0 ? QStringView() : text.sliced(dot + 1);
        while (whole.startsWith(u'0'))
            whole = whole.sliced(1);
        while (fraction.endsWith(u'0'))
            fraction.chop(1);
        if (whole.isEmpty() && fraction.isEmpty())
            isNegative = false;
    }
};

int compareSizes(const Decimal &a, const Decimal &b)
{
    if (a.whole.size() != b.whole.size())
        return a.whole.size() < b.whole.size() ? -1 : 1;
    if (const int order = a.whole.compare(b.whole); order != 0)
        return order;
    return a.fraction.compare(b.fraction);
}

bool areSame(const QString &a, const QString &b)
{
    return a == b || (isNumber(a) && isNumber(b) && compareNumbers(a, b) == 0);
}

} // namespace

int compareNumbers(QStringView a, QStringView b)
{
    const Decimal first(a);
    const Decimal second(b);
    if (first.isNegative != second.isNegative)
        return first.isNegative ? -1 : 1;
    return first.isNegative ? compareSizes(second, first) : compareSizes(first, second);
}

std::optional<bool> holds(const QString &value, Comparison comparison, const QString &other)
{
    using enum Comparison;
    switch (comparison) {
    case Is:
        return areSame(value, other);
    case IsNot:
        return !areSame(value, other);
    case Has:
        return value.contains(other);
    case HasNot:
        return !value.contains(other);
    case Above:
    case Below:
        if (!isNumber(value) || !isNumber(other))
            return {};
        return comparison == Above ? compareNumbers(value, other) > 0 : compareNumbers(value, other) < 0;
    case Empty:
        return value.isEmpty();
    case NotEmpty:
        return !value.isEmpty();
    }
    Q_UNREACHABLE();
}

} // namespace plum::edition2
