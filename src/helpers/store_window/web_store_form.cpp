#include "web_store_form.h"

#include "load_failure.h"
#include "loading_picture.h"
#include "look/window_nodes.h"
#include "platform/web_sandbox.h"

#include <QApplication>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the browser engine reads from the environment when its first object is made.
void prepareEngine()
{
    prepareWebSandbox();
    if (Theme::of(QApplication::palette()).isDark)
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS",
            qgetenv("QTWEBENGINE_CHROMIUM_FLAGS") + " --blink-settings=preferredColorScheme=0");
}

} // namespace

WebStoreForm::WebStoreForm(const QUrl &downloadBase)
    : m_downloadBase(downloadBase)
{
    makeThrowAway(m_storeProfile);
    makeThrowAway(m_sentProfile);
    m_sentProfile.setUrlRequestInterceptor(&m_noRequests);
    buildPages();
    freshStorePage();
    for (const QKeySequence &keys : {QKeySequence(Qt::Key_F5), QKeySequence(Qt::CTRL | Qt::Key_R)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &WebStoreForm::reload);
}

WebStoreForm::~WebStoreForm()
{
    // Pages must go before their profiles.
    delete m_pageWindow;
    delete llq;
    delete m_page;
}

void WebStoreForm::buildPages()
{
    llq = new QWebEngineView;
    llq->setObjectName(u"llq"_s);
    llq->setContextMenuPolicy(Qt::NoContextMenu);

    loadimgbox = new QWidget;
    loadimgbox->setObjectName(u"loadimgbox"_s);
    loadimgbox->setAccessibleName(tr("Page"));
    m_picture = new LoadingPicture(theme().line, theme().accent, loadimgbox);
    markAsDecoration(*m_picture);
    loadt = new QLabel(loadimgbox);
    loadt->setObjectName(u"loadt"_s);
    loadt->setTextFormat(Qt::PlainText);
    loadt->setAlignment(Qt::AlignCenter);
    loadt->setWordWrap(true);
    m_retry = new QPushButton(tr("Retry"), loadimgbox);
    m_retry->setObjectName(u"retry"_s);
    m_retry->setProperty("primary", true);
    m_retry->hide();
    connect(m_retry, &QPushButton::clicked, this, &WebStoreForm::reload);
    m_retry->setAutoDefault(true); // Enter presses it, too
    auto *picture = new QVBoxLayout(loadimgbox);
    picture->addStretch();
    picture->addWidget(m_picture, 0, Qt::AlignHCenter);
    picture->addSpacing(10);
    picture->addWidget(loadt);
    picture->addSpacing(10);
    picture->addWidget(m_retry, 0, Qt::AlignHCenter);
    picture->addStretch();

    auto *pages = new QStackedLayout;
    pages->setStackingMode(QStackedLayout::StackAll);
    pages->addWidget(llq);
    pages->addWidget(loadimgbox);
    pages->setCurrentWidget(loadimgbox);
    auto *content = new QVBoxLayout;
    content->setSpacing(0);
    content->addWidget(buildNote());
    content->addLayout(pages, 1);
    build(content);
}

QWidget *WebStoreForm::buildNote()
{
    m_sentBy = new QWidget;
    m_sentBy->setObjectName(u"sentby"_s);
    m_sentBy->setAttribute(Qt::WA_StyledBackground);
    auto *note = new QLabel(
        tr("Another program sent this page. It is not from the store and cannot reach anything."));
    note->setObjectName(u"sentbytext"_s);
    note->setWordWrap(true);
    auto *row = new QVBoxLayout(m_sentBy);
    row->setContentsMargins(12, 6, 12, 6);
    row->addWidget(note);
    m_sentBy->hide();
    return m_sentBy;
}

void WebStoreForm::usePage(ConfinedPage *page)
{
    ConfinedPage *before = std::exchange(m_page, page);
    page->setBackgroundColor(theme().window);
    connect(page, &ConfinedPage::completed, this, [this] {
        loadimgbox->hide();
        Q_EMIT completed();
    });
    connect(page, &QWebEnginePage::loadingChanged, this, [this, page](const QWebEngineLoadingInfo &info) {
        if (page == m_page && info.status() == QWebEngineLoadingInfo::LoadFailedStatus)
            pageFailed(loadFailureText(info.errorDomain(), info.errorCode()), info.url());
    });
    connect(page, &QWebEnginePage::renderProcessTerminated, this,
        [this, page](QWebEnginePage::RenderProcessTerminationStatus status) {
            if (page == m_page && status != QWebEnginePage::NormalTerminationStatus)
                pageFailed(
                    tr("This page was too much for the browser, or it broke."), page->addressToReload());
        });
    const bool hadKeyboard = llq->isAncestorOf(QApplication::focusWidget());
    llq->setPage(page);
    if (hadKeyboard)
        llq->setFocus();
    // This may be called from one of its own events.
    if (before)
        before->deleteLater();
    const bool isSent = qobject_cast<SentPage *>(page) != nullptr;
    m_sentBy->setVisible(isSent);
    setUsualCaption(isSent ? tr("A page from another program") : u"Plum"_s);
    m_failed.clear();
}

StorePageView &WebStoreForm::freshStorePage()
{
    auto *current = qobject_cast<StorePageView *>(m_page);
    if (current && current->isFresh())
        return *current;
    auto *page = new StorePageView(m_storeProfile, m_downloadBase, StorePageView::Windows::One, this);
    connectPage(*page);
    connect(page, &StorePageView::windowOpened, this, &WebStoreForm::openPageWindow);
    usePage(page);
    return *page;
}

void WebStoreForm::connectPage(StorePageView &page)
{
    connect(&page, &StorePageView::packageFollowed, this, &StoreForm::packageFollowed);
    connect(&page, &StorePageView::outsideOpened, this, &StoreForm::outsideOpened);
}

void WebStoreForm::openPageWindow(StorePageView *page)
{
    // The engine is in the middle of making the new page and must not lose another one meanwhile.
    if (m_pageWindow) {
        m_pageWindow->hide();
        m_pageWindow->deleteLater();
    }
    auto *window = new QWebEngineView;
    m_pageWindow = window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    page->setParent(window);
    window->setPage(page);
    window->setContextMenuPolicy(Qt::NoContextMenu);
    constexpr QSize frame(16, 48); // what the window manager puts around it, at most
    window->resize(usualBrowserSize.boundedTo(window->screen()->availableSize() - frame));
    // The page chooses the words, but not that the window looks like another.
    const auto nameAfter
        = [window](const QString &title) { window->setWindowTitle(tr("%1 (store page)").arg(title)); };
    connect(page, &QWebEnginePage::titleChanged, window, nameAfter);
    connect(page, &QWebEnginePage::windowCloseRequested, window, &QWidget::close);
    connect(page, &StorePageView::packageFollowed, window, &QWidget::close);
    connectPage(*page);
    nameAfter({});
    window->show();
}

void WebStoreForm::pageFailed(const QString &reason, const QUrl &address)
{
    if (reason.isEmpty())
        return;
    m_failed = address;
    m_picture->hide();
    loadt->setText(reason);
    m_retry->setVisible(!m_failed.isEmpty());
    loadimgbox->show();
    if (m_retry->isVisible())
        m_retry->setFocus();
}

void WebStoreForm::reload()
{
    const QUrl address = m_failed.isEmpty() ? m_page->addressToReload() : m_failed;
    if (!address.isEmpty())
        showAddress(address);
}

void WebStoreForm::showAddress(const QUrl &address)
{
    if (m_retry->hasFocus())
        llq->setFocus();
    setLoadingVisible(true);
    freshStorePage().showAddress(address);
}

void WebStoreForm::writePage(const QString &html)
{
    setLoadingVisible(true);
    auto *page = new SentPage(m_sentProfile, this);
    usePage(page);
    page->write(html);
}

void WebStoreForm::clearPage()
{
    freshStorePage().showAddress(blankAddress);
}

void WebStoreForm::setLoadingVisible(bool visible)
{
    m_picture->setVisible(visible);
    loadt->setText(tr("Loading…"));
    m_retry->hide();
    loadimgbox->setVisible(visible);
}

void WebStoreForm::bringUp()
{
    StoreForm::bringUp();
    llq->setFocus();
}

void WebStoreForm::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous() && m_pageWindow)
        m_pageWindow->close();
    StoreForm::hideEvent(event);
}

std::unique_ptr<StoreForm> makeStoreForm(const QUrl &downloadBase)
{
    prepareEngine();
    return std::make_unique<WebStoreForm>(downloadBase);
}

} // namespace plum
