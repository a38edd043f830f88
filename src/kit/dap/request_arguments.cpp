#include "kit/dap/request_arguments.h"

#include <cmath>
#include <limits>

namespace plum::kit {

using namespace Qt::StringLiterals;

QString RequestArguments::full(const QString &name) const
{
    return m_path.isEmpty() ? name : m_path + u'.' + name;
}

void RequestArguments::refuse(const QString &name, const QString &whatItIs) const
{
    throw RequestProblem(has(name) ? u"%1 is %2"_s.arg(full(name), whatItIs)
                                   : u"%1 is missing; it is %2"_s.arg(full(name), whatItIs));
}

QString RequestArguments::text(const QString &name) const
{
    const QJsonValue value = m_values[name];
    if (!value.isString())
        refuse(name, u"a text"_s);
    return value.toString();
}

QString RequestArguments::textOr(const QString &name, const QString &fallback) const
{
    return has(name) ? text(name) : fallback;
}

int RequestArguments::number(const QString &name) const
{
    const double value = m_values[name].toDouble(std::numeric_limits<double>::quiet_NaN());
    // What is no number is not equal to itself.
    if (std::trunc(value) != value || std::abs(value) > std::numeric_limits<int>::max())
        refuse(name, u"a whole number"_s);
    return static_cast<int>(value);
}

int RequestArguments::numberOr(const QString &name, int fallback) const
{
    return has(name) ? number(name) : fallback;
}

std::optional<double> RequestArguments::seconds(const QString &name) const
{
    constexpr double most = 1'000'000;
    if (!has(name))
        return {};
    const double value = m_values[name].toDouble();
    if (value <= 0 || value > most)
        refuse(name, u"a number of seconds above 0"_s);
    return value;
}

bool RequestArguments::flag(const QString &name, bool fallback) const
{
    if (has(name) && !m_values[name].isBool())
        refuse(name, u"true or false"_s);
    return m_values[name].toBool(fallback);
}

QStringList RequestArguments::texts(const QString &name) const
{
    if (has(name) && !m_values[name].isArray())
        refuse(name, u"a list of texts"_s);
    QStringList found;
    for (const auto &value : m_values[name].toArray()) {
        if (!value.isString())
            refuse(name, u"a list of texts"_s);
        found += value.toString();
    }
    return found;
}

RequestArguments RequestArguments::object(const QString &name) const
{
    if (has(name) && !m_values[name].isObject())
        refuse(name, u"an object"_s);
    return RequestArguments(m_values[name].toObject(), full(name));
}

QList<RequestArguments> RequestArguments::objects(const QString &name) const
{
    if (has(name) && !m_values[name].isArray())
        refuse(name, u"a list of objects"_s);
    QList<RequestArguments> found;
    for (const auto &value : m_values[name].toArray()) {
        if (!value.isObject())
            refuse(name, u"a list of objects"_s);
        found += RequestArguments(value.toObject(), full(name));
    }
    return found;
}

} // namespace plum::kit
