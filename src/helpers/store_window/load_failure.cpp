#include "load_failure.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace plum {

namespace {

// Numbers of the browser engine.
constexpr int brokenOff = -3;
constexpr int noNetwork = -106;
constexpr int addressUnknown = -105;
constexpr int tooSlow[] = {-7, -118};

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(plum::WebStoreForm)
};

QString answerText(int status)
{
    if (status == 404 || status == 410)
        return Words::tr("The store has no such page.");
    if (status >= 500)
        return Words::tr("The store has a problem of its own. Try again a little later.");
    return Words::tr("The store does not give this page away.");
}

} // namespace

QString loadFailureText(QWebEngineLoadingInfo::ErrorDomain domain, int code)
{
    if (domain == QWebEngineLoadingInfo::HttpStatusCodeDomain)
        return answerText(code);
    if (code == brokenOff)
        return {};
    if (code == noNetwork)
        return Words::tr("This computer is not connected to a network.");
    if (code == addressUnknown || domain == QWebEngineLoadingInfo::DnsErrorDomain)
        return Words::tr("The store was not found. Is this computer connected to the network?");
    if (std::ranges::find(tooSlow, code) != std::end(tooSlow))
        return Words::tr("The store takes too long to answer.");
    if (domain == QWebEngineLoadingInfo::CertificateErrorDomain)
        return Words::tr("The store cannot prove that it is the one it says it is.");
    if (domain == QWebEngineLoadingInfo::ConnectionErrorDomain)
        return Words::tr("The store does not answer.");
    return Words::tr("The store's answer is no page that can be shown.");
}

} // namespace plum
