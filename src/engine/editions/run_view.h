#pragma once

#include <QString>
#include <QStringList>

namespace plum {

// A line at which a run stands.
struct RunPlace
{
    QString file = {}; // a part's; empty for the script itself
    int line = 0; // from 1
};

// What an expression came to.
struct Evaluation
{
    QString value = {};
    QString problem = {}; // why it has no value, as a sentence; empty when it has one
};

// A run between two of its lines, for who holds it there: where it stands and what its variables are. Frame 0
// is the innermost of `depth()`; the others are those that run it.
class RunView
{
public:
    virtual ~RunView() = default;

    virtual int edition() const = 0; // of the language
    virtual int depth() const = 0;
    virtual RunPlace place(int frame) const = 0;

    // The part's name, or that of the script.
    virtual QString name(int frame) const = 0;

    // The line as it is written.
    virtual QString text(int frame) const = 0;

    // Their names, sorted.
    virtual QStringList variables(int frame) const = 0;

    // The empty text for one that is not there.
    virtual QString variable(int frame, const QString &name) const = 0;
    virtual void setVariable(int frame, const QString &name, const QString &value) = 0;

    // `expression`: what can stand as an argument of a line. The run does not notice: nobody hears of it, and
    // a refusal is not the run's.
    virtual Evaluation evaluate(int frame, const QString &expression) = 0;
};

} // namespace plum
