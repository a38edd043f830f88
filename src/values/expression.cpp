#include "values/expression.h"

#include "engine/conversions.h"
#include "engine/editions/reason.h"
#include "engine/run_time_error.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int deepest = 100; // parentheses and signs inside one another
constexpr int mostDigits = 15;
constexpr qsizetype mostShown = 40; // characters of a value that is no number

struct Failure
{
    QString problem;
    qsizetype column;
};

bool isNameStart(QChar c)
{
    return c.isLetter() || c == u'_' || c.isSurrogate();
}

bool isNamePart(QChar c)
{
    return isNameStart(c) || c.isDigit() || c.isMark() || c == u'.';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// What references hold in an expression that is only read: everything that is worked out of it is as unknown,
// and fails nothing.
constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

// One pass from left to right; each method reads what its name says and returns its value.
class Calculator
{
public:
    enum class Values {
        Known,
        Unknown, // of references; their texts do not count
    };

    Calculator(QStringView text, const ReferencedText &textOf, Values values = Values::Known)
        : m_text(text)
        , m_textOf(textOf)
        , m_values(values)
    {
    }

    double whole()
    {
        const double value = comparison();
        if (!atEnd())
            fail(Reason::tr("an operator is missing before \"%1\"").arg(here()));
        return value;
    }

private:
    struct Deeper
    {
        explicit Deeper(Calculator &calculator)
            : m_calculator(calculator)
        {
            if (++m_calculator.m_depth > deepest)
                m_calculator.fail(Reason::tr("the expression is nested too deeply"));
        }
        ~Deeper() { --m_calculator.m_depth; }
        Q_DISABLE_COPY_MOVE(Deeper)

        Calculator &m_calculator;
    };

    double comparison()
    {
        double left = sum();
        for (;;) {
            skipBlanks();
            if (take(u"<="))
                left = compared(left, sum(), [](double a, double b) { return a <= b; });
            else if (take(u">="))
                left = compared(left, sum(), [](double a, double b) { return a >= b; });
            else if (take(u"=="))
                left = compared(left, sum(), [](double a, double b) { return a == b; });
            else if (take(u"!="))
                left = compared(left, sum(), [](double a, double b) { return a != b; });
            else if (take(u"<"))
                left = compared(left, sum(), [](double a, double b) { return a < b; });
            else if (take(u">"))
                left = compared(left, sum(), [](double a, double b) { return a > b; });
            else
                return left;
        }
    }

    template <typename Holds> double compared(double left, double right, Holds holds) const
    {
        return !isKnown(left) || !isKnown(right) ? unknown : holds(left, right) ? 1 : 0;
    }

    double sum()
    {
        double left = product();
        for (;;) {
            skipBlanks();
            const qsizetype at = m_at;
            if (take(u"+"))
                left = finite(left + product(), at);
            else if (take(u"-"))
                left = finite(left - product(), at);
            else
                return left;
        }
    }

    double product()
    {
        double left = factor();
        for (;;) {
            skipBlanks();
            const qsizetype at = m_at;
            if (take(u"*"))
                left = finite(left * factor(), at);
            else if (take(u"/"))
                left = finite(left / divisor(at), at);
            else if (take(u"%"))
                left = remainder(left, divisor(at));
            else
                return left;
        }
    }

    double divisor(qsizetype at)
    {
        const double value = factor();
        if (value == 0)
            failAt(at, Reason::tr("division by zero"));
        return value;
    }

    static double remainder(double value, double by)
    {
        const double rest = std::fmod(value, by);
        return rest != 0 && (rest < 0) != (by < 0) ? rest + by : rest;
    }

    double factor()
    {
        const Deeper deeper(*this);
        skipBlanks();
        if (take(u"-"))
            return -factor();
        if (take(u"+"))
            return factor();
        if (take(u"(")) {
            const double value = comparison();
            expectClosing();
            return value;
        }
        if (atEnd())
            fail(Reason::tr("a number is missing"));
        const QChar c = m_text[m_at];
        if (isDigit(c) || c == u'.')
            return number();
        if (isNameStart(c))
            return named();
        fail(Reason::tr("a number is missing before \"%1\"").arg(here()));
    }

    double number()
    {
        const qsizetype from = m_at;
        const auto digits = [this] {
            const qsizetype begin = m_at;
            while (m_at < m_text.size() && isDigit(m_text[m_at]))
                ++m_at;
            return m_at - begin;
        };
        qsizetype count = digits();
        if (m_at < m_text.size() && m_text[m_at] == u'.') {
            ++m_at;
            count += digits();
        }
        const QStringView written = m_text.sliced(from, m_at - from);
        if (count == 0 || (m_at < m_text.size() && isNamePart(m_text[m_at]))) {
            while (m_at < m_text.size() && isNamePart(m_text[m_at]))
                ++m_at;
            failAt(from, Reason::tr("\"%1\" is not a number").arg(m_text.sliced(from, m_at - from)));
        }
        return finite(written.toDouble(), from);
    }

    double named()
    {
        const qsizetype from = m_at;
        const QStringView name = readName();
        skipBlanks();
        if (take(u"("))
            return function(name, from);
        const QString text = referenced(name, from);
        if (m_values == Values::Unknown)
            return unknown;
        try {
            return toDouble(text);
        } catch (const RunTimeError &) {
            failAt(from, Reason::tr("%1 is \"%2\", which is not a number").arg(name, text.left(mostShown)));
        }
    }

    double function(QStringView name, qsizetype from)
    {
        if (name == u"min")
            return extreme([](double a, double b) { return std::min(a, b); });
        if (name == u"max")
            return extreme([](double a, double b) { return std::max(a, b); });
        if (name == u"round")
            return rounded();
        if (name == u"length")
            return length();
        failAt(from, Reason::tr("there is no function \"%1\"").arg(name));
    }

    template <typename Choose> double extreme(Choose choose)
    {
        double value = comparison();
        while (takeComma()) {
            const double next = comparison();
            value = !isKnown(value) || !isKnown(next) ? unknown : choose(value, next);
        }
        expectClosing();
        return value;
    }

    double rounded()
    {
        const double value = comparison();
        double digits = 0;
        if (takeComma()) {
            skipBlanks();
            const qsizetype at = m_at;
            digits = comparison();
            if (isKnown(digits) && (digits != std::floor(digits) || digits < 0 || digits > mostDigits))
                failAt(at, Reason::tr("round takes 0 to 15 digits"));
        }
        expectClosing();
        if (!isKnown(digits))
            return unknown;
        const double scale = std::pow(10.0, digits);
        const double scaled = value * scale;
        // What is beyond the precision of a number has no fraction to round.
        if (!(std::abs(scaled) < 1e15))
            return value;
        // A half that is not written exactly in binary, such as 1.005, still counts as a half.
        return QString::number(scaled, 'g', mostDigits).toDouble() >= 0
            ? std::floor(QString::number(scaled + 0.5, 'g', mostDigits).toDouble()) / scale
            : std::ceil(QString::number(scaled - 0.5, 'g', mostDigits).toDouble()) / scale;
    }

    double length()
    {
        skipBlanks();
        const qsizetype from = m_at;
        if (!atEnd() && isNameStart(m_text[m_at])) {
            const QStringView name = readName();
            skipBlanks();
            if (take(u")")) {
                const QString text = referenced(name, from);
                return m_values == Values::Unknown ? unknown : static_cast<double>(text.size());
            }
        }
        failAt(from, Reason::tr("length takes one reference, such as set.name"));
    }

    QString referenced(QStringView name, qsizetype from) const
    {
        if (!name.contains(u'.'))
            failAt(from, Reason::tr("\"%1\" is no reference; write set.%1").arg(name));
        const std::optional<QString> text = m_textOf(name);
        if (!text)
            failAt(from, Reason::tr("%1 was never set").arg(name));
        return *text;
    }

    QStringView readName()
    {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && isNamePart(m_text[m_at]))
            ++m_at;
        return m_text.sliced(from, m_at - from);
    }

    bool takeComma()
    {
        skipBlanks();
        return take(u",");
    }

    void expectClosing()
    {
        skipBlanks();
        if (!take(u")"))
            fail(atEnd() ? Reason::tr("a \")\" is missing")
                         : Reason::tr("a \")\" is missing before \"%1\"").arg(here()));
    }

    void skipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
    }

    bool take(QStringView operation)
    {
        if (!m_text.sliced(m_at).startsWith(operation))
            return false;
        m_at += operation.size();
        return true;
    }

    bool atEnd()
    {
        skipBlanks();
        return m_at == m_text.size();
    }

    // The character that is in the way, whole.
    QStringView here() const
    {
        const bool isPair = m_text[m_at].isHighSurrogate() && m_at + 1 < m_text.size();
        return m_text.sliced(m_at, isPair ? 2 : 1);
    }

    bool isKnown(double value) const { return m_values == Values::Known || !std::isnan(value); }

    double finite(double value, qsizetype at) const
    {
        if (isKnown(value) && !std::isfinite(value))
            failAt(at, Reason::tr("the result is too large"));
        return value;
    }

    [[noreturn]] void fail(const QString &problem) const { failAt(m_at, problem); }
    [[noreturn]] static void failAt(qsizetype at, const QString &problem) { throw Failure{problem, at + 1}; }

    QStringView m_text;
    const ReferencedText &m_textOf;
    const Values m_values;
    qsizetype m_at = 0;
    int m_depth = 0;
};

} // namespace

Calculation calculated(QStringView expression, const ReferencedText &textOf)
{
    try {
        return {Calculator(expression, textOf).whole(), {}, 0};
    } catch (const Failure &failure) {
        return {{}, failure.problem, failure.column};
    }
}

Calculation readExpression(QStringView expression, const std::function<bool(QStringView)> &exists)
{
    const ReferencedText textOf = [&exists](QStringView reference) {
        return exists(reference) ? std::optional(QString()) : std::nullopt;
    };
    try {
        Calculator(expression, textOf, Calculator::Values::Unknown).whole();
        return {};
    } catch (const Failure &failure) {
        return {{}, failure.problem, failure.column};
    }
}

QString numberText(double value)
{
    constexpr double mostExact = 1e15;
    constexpr double leastPlain = 1e-6;
    const double size = std::abs(value);
    if (size < mostExact && value == std::floor(value))
        return QString::number(static_cast<qint64>(value));
    if (size >= mostExact || size < leastPlain)
        return QString::number(value, 'g', mostDigits);
    const int wholeDigits = std::max(1, static_cast<int>(std::floor(std::log10(size))) + 1);
    // Below 1 the zeros behind the point are no digits of the number.
    const int zeros = size < 1 ? -static_cast<int>(std::floor(std::log10(size))) - 1 : 0;
    const int decimals = size < 1 ? mostDigits + zeros : mostDigits - wholeDigits;
    QString text = QString::number(value, 'f', decimals);
    if (text.contains(u'.')) {
        while (text.endsWith(u'0'))
            text.chop(1);
        if (text.endsWith(u'.'))
            text.chop(1);
    }
    return text;
}

} // namespace plum
