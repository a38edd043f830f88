#include "store_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int frameWidth = 4; // a press here resizes the window

const QString styleTemplate = uR"(
QWidget#wei, QWidget#weia, QWidget#loadimgbox, QWidget#content { background: @window; }
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

StoreForm::StoreForm(bool dark)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    , m_colours(storeColours(dark))
{
    setObjectName(u"webbox"_s);
    setStyleSheet(sheetOf(m_colours));
    setMouseTracking(true);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &StoreForm::closeRequested);
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

void StoreForm::setCaption(const QString &text)
{
    // A window without a name could not be told from others in a list of windows.
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
}

void StoreForm::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Q_EMIT closeRequested();
}

// The strip is about a download that the user has seen; one that goes on shows it again.
void StoreForm::hideEvent(QHideEvent *event)
{
    weia->hide();
    QWidget::hideEvent(event);
}

void StoreForm::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_colours.window);
    painter.setPen(m_colours.line);
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
