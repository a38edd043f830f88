#pragma once

#include <QString>
#include <QUrl>

namespace plum {

// What a script asks of the browser helper, from its one command line.
struct BrowserRequest
{
    QUrl address; // empty when `html` is to be shown
    QString html;
    QString title; // empty: the page's own

    // "_tarnwick_url_|||address|||title", "_tarnwick_html_|||page|||title" or "page|||title". The last
    // separator counts, so that the page may hold others; without one there is no title. An address may also
    // be the path of a file.
    static BrowserRequest fromCommandLine(const QString &commandLine);
};

} // namespace plum
