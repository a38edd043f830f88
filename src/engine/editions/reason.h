#pragma once

#include <QCoreApplication>

namespace plum {

// Why a step of a script failed, in the language of the session: a person reads it, in the report or behind
// `try.failed`.
class Reason
{
    Q_DECLARE_TR_FUNCTIONS(plum::Reason)
};

} // namespace plum
