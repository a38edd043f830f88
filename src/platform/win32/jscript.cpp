#include "platform/win32/jscript.h"

#include "platform/classic_number.h"
#include "platform/script_evaluation.h"
#include "platform/win32/com_apartment.h"
#include "platform/win32/script_host.h"
#include "platform/win32/text/wide_text.h"

#include <QCoreApplication>
#include <QMutex>

#include <memory>
#include <oleauto.h>
#include <optional>
#include <wrl/client.h>

namespace plum {

using Microsoft::WRL::ComPtr;

namespace {

constexpr CLSID engineClass{0xf414c260, 0x6ac0, 0x11cf, {0xb6, 0xd1, 0x00, 0xaa, 0x00, 0xbb, 0xbb, 0x58}};

// A value of the engine, freed with this object.
struct Value : VARIANT
{
    Value() { VariantInit(this); }
    ~Value() { VariantClear(this); }
    Q_DISABLE_COPY_MOVE(Value)
};

// The value as text, the way a program that wants text gets it; nothing for null and for an object whose own
// conversion fails.
std::optional<QString> textOf(VARIANT &value)
{
    if (value.vt == VT_R8)
        return classicNumber(value.dblVal);
    Value text;
    if (value.vt == VT_NULL
        || FAILED(VariantChangeTypeEx(&text, &value, plainLanguage, VARIANT_ALPHABOOL, VT_BSTR)))
        return {};
    return QString::fromWCharArray(text.bstrVal, static_cast<qsizetype>(SysStringLen(text.bstrVal)));
}

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
        const ComApartment apartment;
        ScriptHost host;
        ComPtr<IActiveScript> engine;
        ComPtr<IActiveScriptParse> parser;
        if (FAILED(CoCreateInstance(
                engineClass, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript), &engine))
            || FAILED(engine.As(&parser)) || FAILED(engine->SetScriptSite(&host))
            || FAILED(parser->InitNew()))
            return {false, QCoreApplication::translate("plum::Reason", "This system has no script engine.")};
        publish(engine.Get());
        JavaScript::Result result = evaluateIn(*parser.Get(), host);
        publish(nullptr);
        engine->Close();
        return result;
    }

    void interruptScript() override
    {
        const QMutexLocker locker(&m_lock);
        m_interrupted = true;
        interruptEngine();
    }

private:
    void publish(IActiveScript *engine)
    {
        const QMutexLocker locker(&m_lock);
        m_engine = engine;
        if (m_interrupted)
            interruptEngine();
    }

    void interruptEngine()
    {
        const EXCEPINFO nothing{};
        if (m_engine)
            m_engine->InterruptScriptThread(SCRIPTTHREADID_BASE, &nothing, 0);
    }

    JavaScript::Result evaluateIn(IActiveScriptParse &parser, const ScriptHost &host) const
    {
        Value value;
        EXCEPINFO exception{};
        const HRESULT evaluated = parser.ParseScriptText(
            wide(m_program), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISEXPRESSION, &value, &exception);
        const QString description = takeDescription(exception);
        if (FAILED(evaluated))
            return {false, host.error().isEmpty() ? description : host.error()};
        const std::optional<QString> text = textOf(value);
        return text
            ? JavaScript::Result{true, *text}
            : JavaScript::Result{false, QCoreApplication::translate("plum::Reason", "The value is no text.")};
    }

    const QString m_program;
    QMutex m_lock;
    IActiveScript *m_engine = nullptr; // while the script runs
    bool m_interrupted = false;
};

} // namespace

JavaScript::Result JScript::evaluate(const QString &program)
{
    return ScriptEvaluation::await(std::make_unique<Evaluation>(program), m_awaited);
}

} // namespace plum
