#include "kit/dap/held_run.h"

#include "stepping/line_arguments.h"

#include <QFileInfo>

#include <algorithm>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

// The numbers by which an editor asks for frames and scopes; none is 0.
constexpr int scopesOfAFrame = 2;

constexpr int numberOf(int frame)
{
    return frame + 1;
}

QJsonObject scopeNamed(const QString &name, const QString &hint, int reference)
{
    return {{u"name"_s, name}, {u"presentationHint"_s, hint}, {u"variablesReference"_s, reference},
        {u"expensive"_s, false}};
}

QJsonObject namedValue(const QString &name, const QString &value)
{
    return {{u"name"_s, name}, {u"value"_s, value}, {u"variablesReference"_s, 0}};
}

} // namespace

QJsonObject HeldRun::stackTrace(const RequestArguments &arguments) const
{
    const int depth = m_run.depth();
    const int first = std::clamp(arguments.numberOr(u"startFrame"_s, 0), 0, depth);
    const int levels = arguments.numberOr(u"levels"_s, 0);
    const int end = levels > 0 ? first + std::min(levels, depth - first) : depth;
    QJsonArray frames;
    for (int frame = first; frame < end; ++frame) {
        const RunPlace place = m_run.place(frame);
        const QString path = m_sources.pathOf(place.file);
        frames += QJsonObject{{u"id"_s, numberOf(frame)}, {u"name"_s, m_run.name(frame)},
            {u"source"_s, QJsonObject{{u"name"_s, QFileInfo(path).fileName()}, {u"path"_s, path}}},
            {u"line"_s, place.line - 1 + m_counting.firstLine}, {u"column"_s, m_counting.firstColumn}};
    }
    return {{u"stackFrames"_s, frames}, {u"totalFrames"_s, depth}};
}

int HeldRun::frameFrom(const RequestArguments &arguments, int fallback) const
{
    const int number = arguments.numberOr(u"frameId"_s, fallback);
    if (number < numberOf(0) || number >= numberOf(m_run.depth()))
        throw RequestProblem(u"there is no frame %1"_s.arg(number));
    return number - numberOf(0);
}

std::pair<int, HeldRun::Scope> HeldRun::scopeFrom(const RequestArguments &arguments) const
{
    const int reference = arguments.number(u"variablesReference"_s);
    if (reference < 1 || reference > m_run.depth() * scopesOfAFrame)
        throw RequestProblem(u"there are no variables %1"_s.arg(reference));
    const int index = reference - 1;
    return {index / scopesOfAFrame, index % scopesOfAFrame == 0 ? Scope::Variables : Scope::Line};
}

QJsonObject HeldRun::scopes(const RequestArguments &arguments) const
{
    const int frame = frameFrom(arguments, 0);
    const int first = frame * scopesOfAFrame + 1;
    QJsonArray scopes{scopeNamed(u"Variables"_s, u"locals"_s, first)};
    // The lines of the frames around it are under way.
    if (frame == 0)
        scopes += scopeNamed(u"This line"_s, u"arguments"_s, first + 1);
    return {{u"scopes"_s, scopes}};
}

QJsonArray HeldRun::valuesOf(int frame, Scope scope) const
{
    QJsonArray values;
    if (scope == Scope::Variables) {
        for (const QString &name : m_run.variables(frame)) {
            QJsonObject value = namedValue(name, m_run.variable(frame, name));
            value[u"evaluateName"_s] = QString(u"set."_s + name);
            values += value;
        }
        return values;
    }
    for (const LineArgument &argument : argumentsOf(m_run, frame, m_vocabulary)) {
        const Evaluation found = valueOf(m_run, frame, argument);
        QJsonObject value = namedValue(argument.name, found.problem.isEmpty() ? found.value : found.problem);
        QJsonArray attributes{u"readOnly"_s};
        if (!found.problem.isEmpty())
            attributes += u"failedEvaluation"_s;
        value[u"presentationHint"_s] = QJsonObject{{u"attributes"_s, attributes}};
        values += value;
    }
    return values;
}

QJsonObject HeldRun::variables(const RequestArguments &arguments) const
{
    const auto [frame, scope] = scopeFrom(arguments);
    return {{u"variables"_s, valuesOf(frame, scope)}};
}

QJsonObject HeldRun::setVariable(const RequestArguments &arguments) const
{
    const auto [frame, scope] = scopeFrom(arguments);
    const QString name = arguments.text(u"name"_s);
    const QString value = arguments.text(u"value"_s);
    if (scope != Scope::Variables)
        throw RequestProblem(u"only variables can be changed"_s);
    if (!m_run.variables(frame).contains(name))
        throw RequestProblem(u"there is no variable %1 here"_s.arg(name));
    m_run.setVariable(frame, name, value);
    return {{u"value"_s, value}, {u"variablesReference"_s, 0}};
}

QJsonObject HeldRun::evaluate(const RequestArguments &arguments) const
{
    const QString expression = arguments.text(u"expression"_s).trimmed();
    const int frame = frameFrom(arguments, numberOf(0));
    if (m_run.variables(frame).contains(expression))
        return {{u"result"_s, m_run.variable(frame, expression)}, {u"variablesReference"_s, 0}};
    const Evaluation found = m_run.evaluate(frame, expression);
    if (!found.problem.isEmpty())
        throw RequestProblem(found.problem);
    return {{u"result"_s, found.value}, {u"variablesReference"_s, 0}};
}

QJsonObject HeldRun::exceptionInfo() const
{
    if (m_hold.cause != RunControl::Cause::Error)
        throw RequestProblem(u"no line has failed"_s);
    return {{u"exceptionId"_s, u"error"_s}, {u"description"_s, m_hold.reason},
        {u"breakMode"_s, m_hold.isCaught ? u"always"_s : u"unhandled"_s}};
}

} // namespace plum::kit
