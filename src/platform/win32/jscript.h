#pragma once

#include "platform/script_evaluation.h"

namespace plum {

// JavaScript on the script engine that belongs to the system, for which existing apps were written.
class JScript final : public JavaScript
{
public:
    Result evaluate(const QString &program) override;
    void giveUp() override { m_awaited.giveUp(); }

private:
    AwaitedEvaluations m_awaited;
};

} // namespace plum
