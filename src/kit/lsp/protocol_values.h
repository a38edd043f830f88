#pragma once

#include "check/open_script.h"

#include <QJsonArray>
#include <QJsonObject>

#include <exception>

namespace plum::kit {

// Values of the language server protocol, made of ours and read.

// What a request is answered with when it cannot be met.
class RequestError : public std::exception
{
public:
    static constexpr int unknownMethod = -32601;
    static constexpr int failed = -32803;

    RequestError(int code, const QString &reason)
        : m_code(code)
        , m_reason(reason)
    {
    }

    int code() const { return m_code; }
    const QString &reason() const { return m_reason; }
    const char *what() const noexcept override { return "request error"; }

private:
    int m_code;
    QString m_reason;
};

QJsonObject toJson(EditorPlace place);
QJsonObject toJson(EditorPlace from, EditorPlace to);
EditorPlace placeFrom(const QJsonValue &json);

// The place of a name.
QJsonObject rangeOf(const OpenScript &script, const NameUse &use);

// From a finding's place to the next comma, or to the line's end.
QJsonObject rangeOf(const OpenScript &script, const Finding &finding);

QJsonObject toJson(const OpenScript &script, const Finding &finding);

QJsonObject markdown(const QString &text);

} // namespace plum::kit
