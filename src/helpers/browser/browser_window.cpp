#include "helpers/browser/browser_window.h"

#include <QScreen>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualSize(1024, 720); // pixels
constexpr QSize frame(16, 48); // what the window manager puts around it, at most

} // namespace

BrowserWindow::BrowserWindow(const BrowserRequest &request)
    : m_view(new QWebEngineView(&m_profile, this))
{
    m_view->setObjectName(u"view"_s);
    setCentralWidget(m_view);
    resize(usualSize.boundedTo(screen()->availableSize() - frame));
    confine();

    setWindowTitle(request.title);
    if (request.title.isEmpty())
        connect(m_view, &QWebEngineView::titleChanged, this, &QWidget::setWindowTitle);
    // There is one window: a link that wants another stays in it.
    connect(m_view->page(), &QWebEnginePage::newWindowRequested, this,
        [this](QWebEngineNewWindowRequest &wanted) { wanted.openIn(m_view->page()); });
    connect(m_view->page(), &QWebEnginePage::windowCloseRequested, this, &QWidget::close);

    if (request.address.isEmpty())
        m_view->setHtml(request.html);
    else
        m_view->load(request.address);
}

// The view and its page go before the profile that they live in.
BrowserWindow::~BrowserWindow()
{
    delete takeCentralWidget();
}

void BrowserWindow::confine()
{
    QWebEngineSettings *settings = m_profile.settings();
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    m_profile.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    m_profile.setHttpCacheType(QWebEngineProfile::NoCache);
}

} // namespace plum
