#include "store_form.h"

#include "look/moveit.h"
#include "look/picture_button.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int frameWidth = 4; // a press here resizes the window

const QString storeCaption = u"Plum"_s;

// What is in this window alone; the rest looks as in all of Plum's windows.
const QString styleTemplate = uR"(
QWidget#wei, QWidget#weia, QWidget#loadimgbox, QWidget#content { background: @window; }
QWidget#sentby { background: @hover; }
QLabel#loadt, QLabel#sizes { color: @quiet; }
QProgressBar { background: @line; border: none; border-radius: 3px; max-height: 6px; min-height: 6px; }
QProgressBar::chunk { background: @accent; border-radius: 3px; }
)"_s;

// What the menu says of an installed app. "&" would mark the letter behind it.
QString captionOf(const QJsonObject &app)
{
    QString name = app.value("keyword"_L1).toString();
    const QString version = app.value("version"_L1).toString();
    const QString newest = app.value("newest"_L1).toString();
    if (!version.isEmpty())
        name += u' ' + version;
    const QString caption = newest.isEmpty()
        ? StoreForm::tr("%1 is installed: Reinstall").arg(name)
        : StoreForm::tr("%1 is installed: Update to %2").arg(name, newest);
    return QString(caption).replace(u'&', "&&"_L1);
}

} // namespace

StoreForm::StoreForm()
    : BorderlessWindow(nullptr, Qt::Window)
    , m_usualCaption(storeCaption)
{
    setObjectName(u"webbox"_s);
    applyStyle();
    connect(this, &BorderlessWindow::themeChanged, this, &StoreForm::applyStyle);
    setMouseTracking(true);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &StoreForm::closeRequested);
}

void StoreForm::applyStyle()
{
    QString sheet = styleTemplate;
    const std::pair<QLatin1StringView, QColor> colours[]
        = {{"@window"_L1, theme().window}, {"@quiet"_L1, theme().quiet}, {"@line"_L1, theme().line},
            {"@hover"_L1, theme().hover}, {"@accent"_L1, theme().accent}};
    for (const auto &[name, colour] : colours)
        sheet.replace(name, colour.name());
    setStyleSheet(theme().styleSheet() + sheet);
    m_apps.setStyleSheet(theme().styleSheet());
}

void StoreForm::build(QLayout *content)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(frameWidth, frameWidth, frameWidth, frameWidth);
    layout->setSpacing(0);
    layout->addWidget(buildBar());
    layout->addLayout(content, 1);
    layout->addWidget(buildStrip());
    setCaption({});
    Command1_Click();
}

QWidget *StoreForm::buildBar()
{
    wei = new QWidget;
    wei->setObjectName(u"wei"_s);
    wei->setAccessibleName(tr("Title bar"));
    wei->setAttribute(Qt::WA_StyledBackground);
    wei->setCursor(Qt::ArrowCursor);

    m_caption = new QLabel;
    m_caption->setObjectName(u"caption"_s);
    m_caption->setTextFormat(Qt::PlainText);
    m_caption->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // no text makes a window wider
    auto *Image1 = new PictureButton(u"Image1"_s, PictureButton::Picture::Close, tr("Close (Esc)"), wei);
    connect(Image1, &PictureButton::clicked, this, &StoreForm::closeRequested);
    (new moveit(*this))->installOn(*wei);

    m_apps.setObjectName(u"installedmenu"_s);
    m_apps.setAccessibleName(tr("Installed apps"));
    m_installed = new QPushButton(tr("Installed apps"));
    m_installed->setObjectName(u"installed"_s);
    m_installed->setMenu(&m_apps);
    m_installed->setAutoDefault(true); // Enter presses it, too
    m_installed->hide();

    auto *bar = new QHBoxLayout(wei);
    bar->setContentsMargins(12, 3, 3, 5);
    m_unsigned = new QLabel(tr("This store is on this computer and signs nothing."));
    m_unsigned->setObjectName(u"unsigned"_s);
    m_unsigned->setProperty("quiet", true);
    m_unsigned->setWordWrap(isNarrow(usualBrowserSize.width()));
    bar->addWidget(m_caption, 1);
    bar->addWidget(m_unsigned);
    bar->addWidget(m_installed);
    bar->addWidget(Image1);
    return wei;
}

QWidget *StoreForm::buildStrip()
{
    weia = new QWidget;
    weia->setObjectName(u"weia"_s);
    weia->setAccessibleName(tr("Download"));
    weia->setAttribute(Qt::WA_StyledBackground);
    m_bar = new QProgressBar;
    m_bar->setObjectName(u"bar"_s);
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(tr("Download"));
    m_bar->setRange(0, 1000);
    m_percent = new QLabel;
    m_percent->setTextFormat(Qt::PlainText);
    m_percent->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_percent->setObjectName(u"percent"_s);
    m_sizes = new QLabel;
    m_sizes->setTextFormat(Qt::PlainText);
    m_sizes->setObjectName(u"sizes"_s);

    m_again = new QPushButton(tr("Retry"));
    m_again->setObjectName(u"tryagain"_s);
    m_again->setAutoDefault(true);
    m_again->hide();
    connect(m_again, &QPushButton::clicked, this, &StoreForm::retryRequested);

    auto *texts = new QHBoxLayout;
    texts->addWidget(m_percent, 1);
    texts->addWidget(m_sizes);
    texts->addWidget(m_again);
    auto *strip = new QVBoxLayout(weia);
    strip->setContentsMargins(12, 8, 12, 8);
    strip->addWidget(m_bar);
    strip->addLayout(texts);
    weia->hide();
    return weia;
}

void StoreForm::setCaption(const QString &text, const QString &meaning)
{
    m_givenCaption = text;
    m_meaning = meaning;
    showCaption();
}

void StoreForm::setUsualCaption(const QString &text)
{
    m_usualCaption = text;
    showCaption();
}

// A window without a name could not be told from others in a list of windows.
void StoreForm::showCaption()
{
    const QString shown = m_givenCaption.isEmpty() ? m_usualCaption : m_givenCaption;
    m_caption->setText(m_meaning.isEmpty() ? shown : shown + u" ("_s + m_meaning + u')');
    m_unsigned->setVisible(m_isUnsigned && m_usualCaption == storeCaption);
    setWindowTitle(shown);
}

void StoreForm::tellUnsigned()
{
    m_isUnsigned = true;
    showCaption();
}

void StoreForm::setProgress(const QJsonObject &fields)
{
    const double percent = fields.value("percent"_L1).toDouble();
    const QString done = fields.value("done"_L1).toString();
    const QString total = fields.value("total"_L1).toString();
    const QString speed = fields.value("speed"_L1).toString();
    m_bar->setValue(static_cast<int>(percent * 10));
    m_percent->setText(u"%1 %"_s.arg(percent, 0, 'f', 0));
    // A download may be over before there is a speed.
    m_sizes->setText(speed.isEmpty() ? tr("%1 of %2").arg(done, total)
                                     : tr("%1 of %2, %3 a second").arg(done, total, speed));
    // A download that comes to its end while the window is hidden is over when the window comes back.
    weia->setVisible(isVisible());
}

void StoreForm::forgetProgress()
{
    m_bar->setValue(0);
    m_percent->clear();
    m_sizes->clear();
    weia->hide();
}

void StoreForm::setApps(const QJsonArray &apps)
{
    m_apps.clear();
    for (const auto &each : apps) {
        const QJsonObject app = each.toObject();
        const QString keyword = app.value("keyword"_L1).toString();
        connect(m_apps.addAction(captionOf(app)), &QAction::triggered, this,
            [this, keyword] { Q_EMIT anewRequested(keyword); });
    }
    m_installed->setVisible(!apps.isEmpty());
}

void StoreForm::setFailed(const QString &keyword)
{
    m_failed = keyword;
    // A page that failed offers the same word.
    m_again->setAccessibleName(tr("Retry %1").arg(keyword));
    m_again->setVisible(!keyword.isEmpty());
    if (!keyword.isEmpty())
        showFailed();
}

void StoreForm::showFailed()
{
    m_bar->setValue(0);
    m_percent->setText(tr("%1 was not installed").arg(m_failed));
    m_sizes->clear();
    weia->setVisible(isVisible());
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
    const QRect free = screenInUse()->availableGeometry();
    resize(size().boundedTo(free.size()));
    move(free.center() - rect().center());
}

void StoreForm::bringUp()
{
    show();
    if (!m_failed.isEmpty())
        showFailed();
    raise();
    activateWindow();
    // A window that had the keyboard when it was hidden is at times taken to have it still; its widgets then
    // hear nothing of getting it again.
    if (QGuiApplication::focusWindow() == windowHandle())
        QApplication::setActiveWindow(this);
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
    BorderlessWindow::hideEvent(event);
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

} // namespace plum
