#pragma once

#include "engine/edition2/runner_run.h"
#include "engine/editions/run_view.h"

namespace plum::edition2 {

// A run of edition 2 before instruction `index`, or at it when it has failed.
class Runner::View final : public RunView
{
public:
    View(Runner &runner, Run &run, std::size_t index)
        : m_runner(runner)
        , m_run(run)
        , m_index(index)
    {
    }

    int edition() const override { return 2; }
    int depth() const override { return int(m_run.position.frames.size()); }
    RunPlace place(int frame) const override;
    QString name(int frame) const override;
    QString text(int frame) const override;
    QStringList variables(int frame) const override { return frameAt(frame).variables.names(); }
    QString variable(int frame, const QString &name) const override
    {
        return frameAt(frame).variables.GetVar(name);
    }
    void setVariable(int frame, const QString &name, const QString &value) override
    {
        frameAt(frame).variables.SetVar(name, value);
    }
    Evaluation evaluate(int frame, const QString &expression) override;

private:
    RunPosition::Frame &frameAt(int frame) const;
    std::size_t indexAt(int frame) const;
    const Instruction &at(int frame) const { return m_run.program->instructions[indexAt(frame)]; }

    Runner &m_runner;
    Run &m_run;
    std::size_t m_index;
};

} // namespace plum::edition2
