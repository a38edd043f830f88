#include "store_form.h"

#include "loading_picture.h"
#include "store_colours.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QStackedLayout>
#include <QToolButton>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>
#include <QWindow>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualBrowserSize(1000, 584);
constexpr int frameWidth = 4; // a press here resizes the window

const QString styleTemplate = uR"(
QWidget#wei, QWidget#weia, QWidget#loadimgbox { background: @window; }
QLabel { color: @text; }
QLabel#loadt, QLabel#sizes { color: @quiet; }
QToolButton#Image1 { border: none; border-radius: 6px; color: @quiet; font-size: 16px; padding: 3px 9px; }
QToolButton#Image1:hover { background: @hover; color: @text; }
QProgressBar { background: @line; border: none; border-radius: 3px; max-height: 6px; min-height: 6px; }
QProgressBar::chunk { background: @accent; border-radius: 3px; }
)"_s;

QString sheetOf(const StoreColours &colours)
{
    QString sheet = styleTemplate;
    const std::pair<QLatin1StringView, QColor> names[]
        = {{"@window"_L1, colours.window}, {"@text"_L1, colours.text}, {"@quiet"_L1, colours.quiet},
            {"@line"_L1, colours.line}, {"@hover"_L1, colours.hover}, {"@accent"_L1, colours.accent}};
    for (const auto &[name, colour] : names)
        sheet.replace(name, colour.name());
    return sheet;
}

} // namespace

StoreForm::StoreForm(const QUrl &downloadBase, bool dark)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    , m_dark(dark)
    , m_page(new StorePageView(m_profile, downloadBase, this))
{
    makeThrowAway(m_profile);
    setObjectName(u"webbox"_s);
    build();
    connectPage(*m_page);
    connect(m_page, &StorePageView::completed, this, [this] { loadimgbox->hide(); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &StoreForm::closeRequested);
    setCaption({});
    Command1_Click();
}

StoreForm::~StoreForm()
{
    // The page must go before its profile.
    delete llq;
    delete m_page;
}

void StoreForm::build()
{
    const StoreColours colours = storeColours(m_dark);
    setStyleSheet(sheetOf(colours));
    setMouseTracking(true);

    llq = new QWebEngineView;
    llq->setObjectName(u"llq"_s);
    llq->setPage(m_page);
    llq->setContextMenuPolicy(Qt::NoContextMenu);
    m_page->setBackgroundColor(colours.window);

    loadimgbox = new QWidget;
    loadimgbox->setObjectName(u"loadimgbox"_s);
    m_picture = new LoadingPicture(colours.line, colours.accent, loadimgbox);
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

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(frameWidth, frameWidth, frameWidth, frameWidth);
    layout->setSpacing(0);
    layout->addWidget(buildBar());
    layout->addLayout(pages, 1);
    layout->addWidget(buildStrip());
}

QWidget *StoreForm::buildBar()
{
    wei = new QWidget;
    wei->setObjectName(u"wei"_s);
    wei->setAttribute(Qt::WA_StyledBackground);
    wei->installEventFilter(this);
    wei->setCursor(Qt::ArrowCursor);

    m_caption = new QLabel;
    m_caption->setTextFormat(Qt::PlainText);
    auto *Image1 = new QToolButton; // closes
    Image1->setObjectName(u"Image1"_s);
    Image1->setText(u"✕"_s);
    Image1->setToolTip(tr("Close (Esc)"));
    Image1->setAccessibleName(tr("Close"));
    connect(Image1, &QToolButton::clicked, this, &StoreForm::closeRequested);

    auto *bar = new QHBoxLayout(wei);
    bar->setContentsMargins(12, 3, 3, 5);
    bar->addWidget(m_caption, 1);
    bar->addWidget(Image1);
    return wei;
}

QWidget *StoreForm::buildStrip()
{
    weia = new QWidget;
    weia->setObjectName(u"weia"_s);
    weia->setAttribute(Qt::WA_StyledBackground);
    m_bar = new QProgressBar;
    m_bar->setTextVisible(false);
    m_bar->setRange(0, 1000);
    m_percent = new QLabel;
    m_sizes = new QLabel;
    m_sizes->setObjectName(u"sizes"_s);

    auto *texts = new QHBoxLayout;
    texts->addWidget(m_percent);
    texts->addStretch();
    texts->addWidget(m_sizes);
    auto *strip = new QVBoxLayout(weia);
    strip->setContentsMargins(12, 8, 12, 8);
    strip->addWidget(m_bar);
    strip->addLayout(texts);
    weia->hide();
    return weia;
}

void StoreForm::connectPage(StorePageView &page)
{
    connect(&page, &StorePageView::completed, this, &StoreForm::completed);
    connect(&page, &StorePageView::packageFollowed, this, &StoreForm::packageFollowed);
    connect(&page, &StorePageView::outsideOpened, this, &StoreForm::outsideOpened);
    connect(&page, &StorePageView::windowOpened, this, &StoreForm::openPageWindow);
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

void StoreForm::openPageWindow(StorePageView *page)
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

void StoreForm::loadFailed(const QString &reason)
{
    m_picture->hide();
    loadt->setText(tr("This page cannot be shown.\n%1").arg(reason));
    loadimgbox->show();
}

void StoreForm::showAddress(const QUrl &address)
{
    setLoadingVisible(true);
    m_page->showAddress(address);
}

void StoreForm::writePage(const QString &html)
{
    setLoadingVisible(true);
    m_page->write(html);
}

void StoreForm::clearPage()
{
    m_page->showAddress(QUrl(u"about:blank"_s));
}

void StoreForm::setCaption(const QString &text)
{
    const QString shown = text.isEmpty() ? u"Plum"_s : text;
    m_caption->setText(shown);
    setWindowTitle(shown);
}

void StoreForm::setProgress(const QJsonObject &fields)
{
    const double percent = fields.value("percent"_L1).toDouble();
    m_bar->setValue(static_cast<int>(percent * 10));
    m_percent->setText(u"%1 %"_s.arg(percent, 0, 'f', 0));
    m_sizes->setText(tr("%1 of %2, %3 a second")
                         .arg(fields.value("done"_L1).toString(), fields.value("total"_L1).toString(),
                             fields.value("speed"_L1).toString()));
    weia->show();
}

void StoreForm::setLoadingVisible(bool visible)
{
    m_picture->setVisible(visible);
    loadt->setText(tr("Loading…"));
    loadimgbox->setVisible(visible);
}

QSize StoreForm::aroundBrowser() const
{
    const int strip = weia->isHidden() ? 0 : weia->sizeHint().height();
    return {2 * frameWidth, 2 * frameWidth + wei->sizeHint().height() + strip};
}

// Not asked of the browser itself, whose own size follows later while the window is hidden.
QSize StoreForm::browserSize() const
{
    return size() - aroundBrowser();
}

void StoreForm::resizeForBrowser(QSize browser)
{
    resize(browser + aroundBrowser());
}

void StoreForm::setBrowserWidth(int pixels)
{
    resizeForBrowser({pixels, browserSize().height()});
}

void StoreForm::setBrowserHeight(int pixels)
{
    resizeForBrowser({browserSize().width(), pixels});
}

void StoreForm::setWindowHeight(int pixels)
{
    resize(width(), pixels);
}

void StoreForm::Command1_Click()
{
    if (!testAttribute(Qt::WA_Resized))
        resizeForBrowser(usualBrowserSize);
    const QRect free = screen()->availableGeometry();
    resize(size().boundedTo(free.size()));
    move(free.center() - rect().center());
}

void StoreForm::bringUp()
{
    show();
    raise();
    activateWindow();
    // A window that had the keyboard when it was hidden is at times taken to have it still; its widgets then
    // hear nothing of getting it again.
    if (QGuiApplication::focusWindow() == windowHandle())
        QApplication::setActiveWindow(this);
    llq->setFocus();
}

void StoreForm::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Q_EMIT closeRequested();
}

// The strip is about a download that the user has seen; one that goes on shows it again.
void StoreForm::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        weia->hide();
    QWidget::hideEvent(event);
}

void StoreForm::paintEvent(QPaintEvent *)
{
    const StoreColours colours = storeColours(m_dark);
    QPainter painter(this);
    painter.fillRect(rect(), colours.window);
    painter.setPen(colours.line);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

Qt::Edges StoreForm::edgesAt(QPoint point) const
{
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, point.x() < frameWidth);
    edges.setFlag(Qt::RightEdge, point.x() >= width() - frameWidth);
    edges.setFlag(Qt::TopEdge, point.y() < frameWidth);
    edges.setFlag(Qt::BottomEdge, point.y() >= height() - frameWidth);
    return edges;
}

void StoreForm::mousePressEvent(QMouseEvent *event)
{
    const Qt::Edges edges = edgesAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && edges)
        windowHandle()->startSystemResize(edges);
}

void StoreForm::mouseMoveEvent(QMouseEvent *event)
{
    const Qt::Edges edges = edgesAt(event->position().toPoint());
    const bool isHorizontal = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool isVertical = edges & (Qt::TopEdge | Qt::BottomEdge);
    const bool falls = edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge);
    if (isHorizontal && isVertical)
        setCursor(falls ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
    else if (edges)
        setCursor(isHorizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor);
    else
        unsetCursor();
}

bool StoreForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == wei && event->type() == QEvent::MouseButtonPress
        && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        windowHandle()->startSystemMove();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace plum
