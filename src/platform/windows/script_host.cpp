#include "platform/windows/script_host.h"

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
    if (m_error.isEmpty() && SUCCEEDED(error->GetExceptionInfo(&what))) {
        m_error = QString::fromWCharArray(what.bstrDescription ? what.bstrDescription : L"Script error");
        SysFreeString(what.bstrDescription);
        SysFreeString(what.bstrHelpFile);
        SysFreeString(what.bstrSource);
    }
    return S_OK; // the error is dealt with
}

} // namespace plum
