#pragma once

#include <QString>

namespace plum {

// Evaluates JavaScript. Each evaluation has a fresh global object.
class JavaScript
{
public:
    struct Result
    {
        bool ok = false;
        QString value; // the value as a string, or the error's text
    };

    virtual ~JavaScript() = default;

    // Evaluates `program` and returns the value of its last expression. While it runs the user interface
    // lives; the evaluation is given up when the process ends.
    virtual Result evaluate(const QString &program) = 0;

    // Gives up every evaluation that is under way, from an event of the loop that it waits in; each is a
    // failure then.
    virtual void giveUp() { }
};

} // namespace plum
