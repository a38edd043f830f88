#pragma once

#include "platform/javascript.h"

#include <QString>

namespace plum {

// Calls `function` of `script` with `arguments` (JavaScript text between the parentheses, every "\" turned
// into "/") and returns the value as text; empty when the evaluation fails. Every CR LF goes before the
// evaluation, so a "//" comment hides the rest; kept: scripts use block comments.
QString EvalJs(
    JavaScript &javaScript, const QString &script, const QString &function, const QString &arguments);

// As above, with the error's text where the evaluation fails.
JavaScript::Result callJs(
    JavaScript &javaScript, const QString &script, const QString &function, const QString &arguments);

} // namespace plum
