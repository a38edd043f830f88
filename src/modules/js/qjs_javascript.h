#pragma once

#include "platform/script_evaluation.h"

namespace plum {

// JavaScript on Qt's own engine. A script runs in a thread of its own, so that the user interface lives
// whatever the script does; the calling thread waits in an event loop.
class QjsJavaScript final : public JavaScript
{
public:
    Result evaluate(const QString &program) override;
    void giveUp() override { m_awaited.giveUp(); }

private:
    AwaitedEvaluations m_awaited;
};

} // namespace plum
