#include "modules/js/qjs_javascript.h"

#include "modules/js/classic_text.h"

#include <QEventLoop>
#include <QJSEngine>
#include <QMutex>
#include <QThread>

#include <atomic>
#include <memory>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// How long an interrupted script may take to notice, in milliseconds.
constexpr unsigned long interruptionPatience = 500;

// The engine needs this much for scripts that recurse deeply; it raises an error before it runs out.
constexpr uint deepStack = 8U << 20;

class Evaluation final : public QThread
{
public:
    explicit Evaluation(QString program)
        : m_program(std::move(program))
    {
        setStackSize(deepStack);
    }

    bool isDone() const { return m_done; }
    const JavaScript::Result &result() const { return m_result; }

    void interrupt()
    {
        const QMutexLocker locker(&m_lock);
        m_interrupted = true;
        if (m_engine != nullptr)
            m_engine->setInterrupted(true);
    }

protected:
    void run() override
    {
        {
            QJSEngine engine;
            publish(&engine);
            m_result = evaluateIn(engine);
            publish(nullptr);
        }
        m_done = true;
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
            return {false, u"The value is no text."_s};
        return {true, *text};
    }

    QString m_program;
    JavaScript::Result m_result;
    std::atomic<bool> m_done = false;

    QMutex m_lock;
    QJSEngine *m_engine = nullptr; // while the script runs
    bool m_interrupted = false;
};

} // namespace

JavaScript::Result QjsJavaScript::evaluate(const QString &program)
{
    auto evaluation = std::make_unique<Evaluation>(program);
    QEventLoop loop;
    QObject::connect(evaluation.get(), &QThread::finished, &loop, &QEventLoop::quit);
    evaluation->start();
    loop.exec();
    // The loop also ends when the process is about to.
    if (!evaluation->isDone())
        evaluation->interrupt();
    if (!evaluation->wait(interruptionPatience) && !evaluation->isDone()) {
        // A script deep inside one of the engine's own functions cannot be interrupted; the process ends with
        // it still running.
        static_cast<void>(evaluation.release());
        return {false, u"The process is ending."_s};
    }
    evaluation->wait();
    return evaluation->result();
}

} // namespace plum
