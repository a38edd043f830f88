#include "web_store_form.h"

#include "loading_picture.h"
#include "platform/web_sandbox.h"

#include <QLabel>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the browser engine reads from the environment when its first object is made.
void prepareEngine(bool dark)
{
    prepareWebSandbox();
    if (dark)
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS",
            qgetenv("QTWEBENGINE_CHROMIUM_FLAGS") + " --blink-settings=preferredColorScheme=0");
}

} // namespace

WebStoreForm::WebStoreForm(const QUrl &downloadBase, bool dark)
    : StoreForm(dark)
    , m_page(new StorePageView(m_profile, downloadBase, this))
{
    makeThrowAway(m_profile);
    buildPages();
    connectPage(*m_page);
    connect(m_page, &StorePageView::completed, this, [this] {
        loadimgbox->hide();
        Q_EMIT completed();
    });
}

WebStoreForm::~WebStoreForm()
{
    // The page must go before its profile.
    delete llq;
    delete m_page;
}

void WebStoreForm::buildPages()
{
    llq = new QWebEngineView;
    llq->setObjectName(u"llq"_s);
    llq->setPage(m_page);
    llq->setContextMenuPolicy(Qt::NoContextMenu);
    m_page->setBackgroundColor(colours().window);

    loadimgbox = new QWidget;
    loadimgbox->setObjectName(u"loadimgbox"_s);
    m_picture = new LoadingPicture(colours().line, colours().accent, loadimgbox);
    loadt = new QLabel(loadimgbox);
    loadt->setObjectName(u"loadt"_s);
    loadt->setAlignment(Qt::AlignCenter);
    loadt->setWordWrap(true);
    auto *picture = new QVBoxLayout(loadimgbox);
    picture->addStretch();
    picture->addWidget(m_picture, 0, Qt::AlignHCenter);
    picture->addSpacing(10);
    picture->addWidget(loadt);
    picture->addStretch();

    auto *pages = new QStackedLayout;
    pages->setStackingMode(QStackedLayout::StackAll);
    pages->addWidget(llq);
    pages->addWidget(loadimgbox);
    pages->setCurrentWidget(loadimgbox);
    build(pages);
}

void WebStoreForm::connectPage(StorePageView &page)
{
    connect(&page, &StorePageView::packageFollowed, this, &StoreForm::packageFollowed);
    connect(&page, &StorePageView::outsideOpened, this, &StoreForm::outsideOpened);
    connect(&page, &StorePageView::windowOpened, this, &WebStoreForm::openPageWindow);
    connect(&page, &QWebEnginePage::loadingChanged, this, [this, &page](const QWebEngineLoadingInfo &info) {
        if (&page == m_page && info.status() == QWebEngineLoadingInfo::LoadFailedStatus)
            loadFailed(info.errorString());
    });
    connect(&page, &QWebEnginePage::renderProcessTerminated, this,
        [this, &page](QWebEnginePage::RenderProcessTerminationStatus status) {
            if (&page == m_page && status != QWebEnginePage::NormalTerminationStatus)
                loadFailed(tr("the page's process ended"));
        });
}

void WebStoreForm::openPageWindow(StorePageView *page)
{
    auto *window = new QWebEngineView;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setPage(page);
    window->setContextMenuPolicy(Qt::NoContextMenu);
    window->resize(usualBrowserSize);
    connect(page, &QWebEnginePage::titleChanged, window, &QWidget::setWindowTitle);
    connect(page, &QWebEnginePage::windowCloseRequested, window, &QWidget::close);
    connect(page, &StorePageView::packageFollowed, window, &QWidget::close);
    connectPage(*page);
    window->show();
}

void WebStoreForm::loadFailed(const QString &reason)
{
    m_picture->hide();
    loadt->setText(tr("This page cannot be shown.\n%1").arg(reason));
    loadimgbox->show();
}

void WebStoreForm::showAddress(const QUrl &address)
{
    setLoadingVisible(true);
    m_page->showAddress(address);
}

void WebStoreForm::writePage(const QString &html)
{
    setLoadingVisible(true);
    m_page->write(html);
}

void WebStoreForm::clearPage()
{
    m_page->showAddress(QUrl(u"about:blank"_s));
}

void WebStoreForm::setLoadingVisible(bool visible)
{
    m_picture->setVisible(visible);
    loadt->setText(tr("Loading…"));
    loadimgbox->setVisible(visible);
}

void WebStoreForm::bringUp()
{
    StoreForm::bringUp();
    llq->setFocus();
}

std::unique_ptr<StoreForm> makeStoreForm(const QUrl &downloadBase, bool dark)
{
    prepareEngine(dark);
    return std::make_unique<WebStoreForm>(downloadBase, dark);
}

} // namespace plum
