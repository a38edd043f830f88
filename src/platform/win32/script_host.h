#pragma once

#include <QString>

#include <activscp.h>

namespace plum {

// What the script engine wants of its host: somebody to tell about errors. It lives longer than the engine
// and is therefore not counted.
class ScriptHost final : public IActiveScriptSite
{
public:
    // The text of the first error; empty when there was none.
    const QString &error() const { return m_error; }

    STDMETHODIMP QueryInterface(REFIID wanted, void **found) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP GetLCID(LCID *language) override;
    STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD, IUnknown **, ITypeInfo **) override
    {
        return TYPE_E_ELEMENTNOTFOUND;
    }
    STDMETHODIMP GetDocVersionString(BSTR *) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT *, const EXCEPINFO *) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError *error) override;
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

private:
    QString m_error;
};

// What `exception` says; empties it.
QString takeDescription(EXCEPINFO &exception);

// Languages without local forms of numbers and dates.
constexpr LCID plainLanguage = 0x0409;

} // namespace plum
