#pragma once

#include "platform/javascript.h"

namespace plum {

// JavaScript on the script engine that belongs to the system, for which existing apps were written.
class JScript final : public JavaScript
{
public:
    Result evaluate(const QString &program) override;
};

} // namespace plum
