#pragma once

#include <QJSValue>
#include <QString>

#include <optional>

class QJSEngine;

namespace plum {

// Turns values into text as the classic script host hands them to a program that wants text: numbers with at
// most 15 digits, True and False, nothing for undefined, [object Error] for an error object.
class ClassicText
{
public:
    // Made before a script runs, which may well redefine what the conversion rests on.
    explicit ClassicText(QJSEngine &engine);

    // No text at all for null, and for an object whose own conversion fails.
    std::optional<QString> of(const QJSValue &value) const;

private:
    QJSValue m_convert;
};

} // namespace plum
