#include "platform/win32/script_host.h"

#include <QCoreApplication>

#include <oleauto.h>

namespace plum {

STDMETHODIMP ScriptHost::QueryInterface(REFIID wanted, void **found)
{
    const bool isKnown = wanted == __uuidof(IUnknown) || wanted == __uuidof(IActiveScriptSite);
    *found = isKnown ? static_cast<IActiveScriptSite *>(this) : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP ScriptHost::GetLCID(LCID *language)
{
    *language = plainLanguage;
    return S_OK;
}

STDMETHODIMP ScriptHost::OnScriptError(IActiveScriptError *error)
{
    EXCEPINFO what{};
    if (m_error.isEmpty() && SUCCEEDED(error->GetExceptionInfo(&what)))
        m_error = takeDescription(what);
    return S_OK; // the error is dealt with
}

QString takeDescription(EXCEPINFO &exception)
{
    // An engine may leave the texts until somebody asks for them.
    if (exception.pfnDeferredFillIn)
        exception.pfnDeferredFillIn(&exception);
    const QString description = exception.bstrDescription
        ? QString::fromWCharArray(exception.bstrDescription)
        : QCoreApplication::translate("plum::Reason", "The script failed.");
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    SysFreeString(exception.bstrSource);
    exception = {};
    return description;
}

} // namespace plum
