#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <exception>
#include <optional>

namespace plum::kit {

// Why a request of a debugger cannot be met, as a sentence.
class RequestProblem : public std::exception
{
public:
    explicit RequestProblem(QString reason)
        : m_reason(std::move(reason))
    {
    }

    const QString &reason() const { return m_reason; }
    const char *what() const noexcept override { return "request problem"; }

private:
    QString m_reason;
};

// The arguments of a request. What is not what it has to be raises a RequestProblem; what may be missing is
// the empty value then.
class RequestArguments
{
public:
    // `path`: where the object stands in the arguments, for problems; empty for these themselves.
    explicit RequestArguments(QJsonObject values, QString path = {})
        : m_values(std::move(values))
        , m_path(std::move(path))
    {
    }

    QString text(const QString &name) const; // not missing
    QString textOr(const QString &name, const QString &fallback) const;
    int number(const QString &name) const; // not missing; whole
    int numberOr(const QString &name, int fallback) const;
    std::optional<double> seconds(const QString &name) const; // above 0
    bool flag(const QString &name, bool fallback = false) const;
    QStringList texts(const QString &name) const;
    RequestArguments object(const QString &name) const;
    QList<RequestArguments> objects(const QString &name) const;

    bool has(const QString &name) const { return m_values.contains(name); }
    QStringList names() const { return m_values.keys(); }

private:
    QString full(const QString &name) const;
    [[noreturn]] void refuse(const QString &name, const QString &whatItIs) const;

    QJsonObject m_values;
    QString m_path;
};

} // namespace plum::kit
