#pragma once

#include <QString>
#include <QWebEngineLoadingInfo>

namespace plum {

// Why a page cannot be shown, as one sentence for people, from what the browser engine says; empty when
// nothing has failed but the user or this program has broken the loading off.
QString loadFailureText(QWebEngineLoadingInfo::ErrorDomain domain, int code);

} // namespace plum
