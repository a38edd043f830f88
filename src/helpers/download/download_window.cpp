#include "helpers/download/download_window.h"

#include "engine/text_functions.h"
#include "look/theme.h"
#include "platform/paths.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualWidth = 420; // pixels
constexpr int frame = 16; // what the window manager puts around it, at most

struct StatusText
{
    DownloadStatus status;
    const char *text;
};

// The ends that are failures have words of their own.
constexpr std::array statusTexts{
    StatusText{DownloadStatus::Sending, QT_TRANSLATE_NOOP("plum::DownloadWindow", "Sending the request...")},
    StatusText{DownloadStatus::Receiving, QT_TRANSLATE_NOOP("plum::DownloadWindow", "Receiving...")},
    StatusText{DownloadStatus::Paused, QT_TRANSLATE_NOOP("plum::DownloadWindow", "Paused.")},
    StatusText{DownloadStatus::Complete, QT_TRANSLATE_NOOP("plum::DownloadWindow", "Complete.")},
};

QLabel *namedLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

DownloadWindow::DownloadWindow(const DownloadRequest &request, Paths &paths)
    : m_request(request)
    , m_paths(paths)
    , m_download(paths)
    , m_state(namedLabel(u"state"_s, this))
    , m_bar(new QProgressBar(this))
    , m_figures(namedLabel(u"figures"_s, this))
    , m_again(new QPushButton(tr("Try again"), this))
    , m_end(new QPushButton(tr("Cancel"), this))
{
    useTheme();
    setWindowTitle(request.label);
    setMinimumWidth(std::min(usualWidth, screen()->availableSize().width() - frame));
    m_state->setWordWrap(true);
    m_bar->setObjectName(u"bar"_s);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    m_again->setObjectName(u"again"_s);
    m_again->hide();
    m_end->setObjectName(u"end"_s);

    auto *label = namedLabel(u"label"_s, this);
    label->setText(request.label);
    label->setToolTip(request.url);
    label->setWordWrap(true);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_again);
    buttons->addWidget(m_end);
    auto *rows = new QVBoxLayout(this);
    for (QWidget *row : std::initializer_list<QWidget *>{label, m_bar, m_figures, m_state})
        rows->addWidget(row);
    rows->addLayout(buttons);

    connect(&m_download, &FileDownload::Status, this, &DownloadWindow::showStatus);
    connect(&m_download, &FileDownload::Progress, this, &DownloadWindow::showProgress);
    connect(m_again, &QPushButton::clicked, this, &DownloadWindow::start);
    connect(m_end, &QPushButton::clicked, this, &DownloadWindow::endOrClose);
}

// The colours of Plum's other windows.
void DownloadWindow::useTheme()
{
    const Theme theme = Theme::of(QApplication::palette());
    QPalette colours = palette();
    colours.setColor(QPalette::Window, theme.window);
    setPalette(colours);
    m_bar->setTextVisible(false);
    setStyleSheet(theme.styleSheet()
        + u"QProgressBar { background: %1; border: none; border-radius: 3px; max-height: 6px; min-height: "
          u"6px; }"
          "QProgressBar::chunk { background: %2; border-radius: 3px; }"_s.arg(
              theme.border.name(), theme.accent.name()));
}

// A text that takes more lines than the one before.
void DownloadWindow::makeRoom()
{
    const QSize needed(width(), layout()->totalHeightForWidth(width()));
    resize(size().expandedTo(needed));
}

void DownloadWindow::start()
{
    if (!m_request.staysInFolder(m_paths)) {
        m_state->setText(tr("The file name leads out of the folder. Nothing was downloaded."));
        m_end->setText(tr("Close"));
        makeRoom();
        return;
    }
    QString target = m_request.target;
    QDir().mkpath(m_paths.toSystem(ParentPath(target, ParentPathMode::WithSeparator)));
    m_download.setTarget(m_request.target);
    m_download.setUrl(m_request.url);
    m_download.start();
}

void DownloadWindow::showStatus(DownloadStatus status)
{
    const auto text = std::ranges::find(statusTexts, status, &StatusText::status);
    m_state->setText(text == statusTexts.end() ? m_download.problem() : tr(text->text));
    m_complete = status == DownloadStatus::Complete;
    if (!isOnTheWay(status))
        m_bar->setRange(0, 100); // which may have been a bar that only shows that something happens
    if (m_complete)
        m_bar->setValue(m_bar->maximum());
    const bool busy = m_download.isBusy();
    m_again->setVisible(!busy && !m_complete);
    m_end->setText(busy ? tr("Cancel") : tr("Close"));
    makeRoom();
}

void DownloadWindow::showProgress(
    float percent, const QString &total, const QString &done, const QString &speed)
{
    const bool isKnown = percent >= 0;
    m_bar->setRange(0, isKnown ? 100 : 0);
    m_bar->setValue(static_cast<int>(std::floor(percent)));
    m_figures->setText((isKnown ? tr("%1 of %2").arg(done, total) : done)
        + (speed.isEmpty() ? QString() : tr(", %1/s").arg(speed)));
}

void DownloadWindow::endOrClose()
{
    if (m_download.isBusy())
        m_download.pause();
    else
        close();
}

void DownloadWindow::closeEvent(QCloseEvent *event)
{
    m_download.pause();
    event->accept();
}

} // namespace plum
