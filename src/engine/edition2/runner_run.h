#pragma once

#include "engine/edition2/runner.h"
#include "platform/stop_signal.h"

// What only the runner's own sources see of it.
namespace plum::edition2 {

struct Runner::Run
{
    RunTicket ticket = 0;
    ScriptStart script;
    std::shared_ptr<const Program> program;
    RunPosition position;
    Next waitsAs = Next::GoOn;

    RunStopped::Place placeOf(const Instruction &at) const
    {
        return {script.keyword, at.at.line - 1, at.file == 0 ? QString() : program->files[at.file]};
    }

    // The instruction that comes next.
    const Instruction &next() const { return program->instructions[std::size_t(frame().next)]; }

    // It is carried out now.
    const Instruction &takeNext() { return program->instructions[std::size_t(frame().next++)]; }

    RunPosition::Frame &frame() { return position.frames.back(); }
    const RunPosition::Frame &frame() const { return position.frames.back(); }
};

// Why a line has failed.
struct Runner::Failure
{
    QString reason;
    int file = 0;
    Position at = {};
    bool gaveUp = false;
};

} // namespace plum::edition2
