#include "helpers/browser/browser_request.h"

#include "engine/helper_programs.h"

namespace plum {

namespace {

// Takes `marker` and the separator after it off the front of `text`; false when it does not begin so.
bool takeMarker(QString &text, QLatin1StringView marker)
{
    const QString start = marker + browserFieldSeparator;
    if (!text.startsWith(start))
        return false;
    text.remove(0, start.size());
    return true;
}

} // namespace

BrowserRequest BrowserRequest::fromCommandLine(const QString &commandLine)
{
    QString rest = commandLine;
    const bool isAddress = takeMarker(rest, browserUrlMarker);
    if (!isAddress)
        takeMarker(rest, browserHtmlMarker);

    BrowserRequest request;
    const qsizetype separator = rest.lastIndexOf(browserFieldSeparator);
    const QString content = rest.left(separator);
    if (separator >= 0)
        request.title = rest.sliced(separator + browserFieldSeparator.size());
    if (isAddress)
        request.address = QUrl::fromUserInput(QString(content).replace(u'\\', u'/'));
    else
        request.html = content;
    return request;
}

} // namespace plum
