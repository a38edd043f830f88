#include "modules/js/qjs_javascript.h"

#include "modules/js/classic_text.h"
#include "platform/script_evaluation.h"

#include <QCoreApplication>
#include <QJSEngine>
#include <QMutex>

#include <memory>

namespace plum {

namespace {

class Evaluation final : public ScriptEvaluation
{
public:
    explicit Evaluation(const QString &program)
        : m_program(program)
    {
    }

protected:
    JavaScript::Result evaluate() override
    {
        QJSEngine engine;
        publish(&engine);
        JavaScript::Result result = evaluateIn(engine);
        publish(nullptr);
        return result;
    }

    void interruptScript() override
    {
        const QMutexLocker locker(&m_lock);
        m_interrupted = true;
        if (m_engine != nullptr)
            m_engine->setInterrupted(true);
    }

private:
    void publish(QJSEngine *engine)
    {
        const QMutexLocker locker(&m_lock);
        m_engine = engine;
        if (m_engine != nullptr && m_interrupted)
            m_engine->setInterrupted(true);
    }

    JavaScript::Result evaluateIn(QJSEngine &engine) const
    {
        const ClassicText texts(engine);
        QStringList trace;
        const QJSValue value = engine.evaluate(m_program, QString(), 1, &trace);
        // An error object can also be an ordinary value; only a thrown one leaves a trace.
        if (!trace.isEmpty() || engine.isInterrupted())
            return {false, value.toString()};
        const std::optional<QString> text = texts.of(value);
        if (!text || engine.isInterrupted())
            return {false, QCoreApplication::translate("plum::Reason", "The value is no text.")};
        return {true, *text};
    }

    const QString m_program;
    QMutex m_lock;
    QJSEngine *m_engine = nullptr; // while the script runs
    bool m_interrupted = false;
};

} // namespace

JavaScript::Result QjsJavaScript::evaluate(const QString &program)
{
    return ScriptEvaluation::await(std::make_unique<Evaluation>(program), m_awaited);
}

} // namespace plum
