#include "ui/asking/install_dialog.h"

#include "library/install_offer.h"
#include "look/moveit.h"
#include "sheet/sheet_json.h"
#include "sheet/sheet_sentences.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// In pixels: what reads well, or what a small screen leaves beside the edges.
int textWidth()
{
    constexpr int usual = 400;
    constexpr int edges = 44;
    return std::min(usual, QGuiApplication::primaryScreen()->availableSize().width() - edges);
}

// A text from outside on one line: shortened in the middle where it is too long, whole in the tool tip.
QLabel *outsideText(const QString &name, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->ensurePolished();
    const QString shown = label->fontMetrics().elidedText(text.simplified(), Qt::ElideMiddle, textWidth());
    label->setText(shown);
    if (shown != text)
        label->setToolTip(text.toHtmlEscaped());
    return label;
}

QLabel *sentence(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth());
    return label;
}

// What the app may do: as high as its sentences where the screen has room for them, else it scrolls; the
// question and its answers stay where they are.
class SheetArea final : public QScrollArea
{
public:
    SheetArea(const QString &text, QWidget *parent)
        : QScrollArea(parent)
        , m_text(sentence(text, this))
    {
        setObjectName(u"sheetarea"_s);
        setAccessibleName(InstallDialog::tr("What it may do"));
        m_text->setObjectName(u"sheet"_s);
        m_text->setTextFormat(Qt::PlainText);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setStyleSheet(u"QScrollArea { background: transparent; }"_s);
        viewport()->setAutoFillBackground(false);
        setWidgetResizable(true);
        setWidget(m_text);
        m_text->setAutoFillBackground(false); // which it has from setWidget
        setFixedWidth(textWidth() + barWidth);
    }

    QSize sizeHint() const override
    {
        m_text->ensurePolished();
        return {textWidth() + barWidth, m_text->heightForWidth(textWidth())};
    }
    QSize minimumSizeHint() const override { return {1, fontMetrics().lineSpacing()}; }

protected:
    // A place for the keyboard only where there is something to scroll.
    void resizeEvent(QResizeEvent *event) override
    {
        QScrollArea::resizeEvent(event);
        const bool scrolls = m_text->heightForWidth(textWidth()) > viewport()->height();
        setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
    }

private:
    static constexpr int barWidth = 8;
    QLabel *m_text;
};

// What is known of the package before it is here.
QString factsOf(const InstallOffer &offer)
{
    if (offer.version.isEmpty() && offer.size == 0)
        return InstallDialog::tr("Version and size are not known before it has come.");
    const QString size = QLocale::c().formattedDataSize(offer.size, 1, QLocale::DataSizeTraditionalFormat);
    if (offer.version.isEmpty())
        return size;
    return InstallDialog::tr("Version %1, %2").arg(offer.version, size);
}

QString questionOf(const InstallOffer &offer)
{
    switch (offer.asks) {
    case InstallOffer::Asks::RunChanged:
        return InstallDialog::tr("The script of this app has changed. May it run like this?");
    case InstallOffer::Asks::RunAgain:
        return InstallDialog::tr("You have taken back what this app may do. May it run again?");
    case InstallOffer::Asks::Install:
        break;
    }
    return offer.replaces ? InstallDialog::tr("Install this app in place of the one that is there?")
                          : InstallDialog::tr("Install this app?");
}

// What the app may do; where it may do something already, what is new.
QString sheetText(const InstallOffer &offer)
{
    const std::optional<Sheet> sheet = sheetFromText(offer.sheet);
    if (!sheet)
        return InstallDialog::tr(
            "What it may do is worked out when it has come. Install only what you trust.");
    const std::optional<Sheet> before = sheetFromText(offer.granted);
    if (!before)
        return sentences(*sheet).join(u'\n');
    const Sheet growth = sheet->growthFrom(*before);
    return growth.isEmpty() ? InstallDialog::tr("It may do nothing that it could not do before.")
                            : InstallDialog::tr("It could not do this before:") + u'\n'
            + sentences(growth, Sentences::Growth).join(u'\n');
}

} // namespace

InstallDialog::InstallDialog(const InstallOffer &offer)
    : BorderlessWindow(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint)
    , m_install(new QPushButton(offer.asks == InstallOffer::Asks::Install ? tr("Install") : tr("Run"), this))
    , m_cancel(new QPushButton(tr("Cancel"), this))
{
    setObjectName(u"asks"_s);
    setWindowTitle(tr("Plum asks"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_install->setObjectName(u"install"_s);
    m_install->setProperty("primary", true);
    m_install->installEventFilter(this);
    m_cancel->setObjectName(u"cancel"_s);

    QLabel *question = sentence(questionOf(offer), this);
    question->setObjectName(u"question"_s);
    question->setProperty("heading", true);
    QLabel *origin = outsideText(u"origin"_s, offer.origin, this);
    origin->setProperty("quiet", true);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(8);
    column->addWidget(question);
    QLabel *keyword = outsideText(u"keyword"_s, offer.keyword, this);
    QFont large = keyword->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    keyword->setFont(large);
    column->addWidget(keyword);
    if (offer.asks == InstallOffer::Asks::Install) {
        QLabel *facts = offer.version.isEmpty() ? sentence(factsOf(offer), this)
                                                : outsideText(u"facts"_s, factsOf(offer), this);
        facts->setObjectName(u"facts"_s);
        facts->setProperty("quiet", true);
        column->addWidget(facts);
    }
    column->addWidget(origin);
    if (offer.fromUnsignedStore) {
        QLabel *warning = sentence(tr("This store is on this computer and signs nothing."), this);
        warning->setObjectName(u"unsigned"_s);
        column->addWidget(warning);
    }
    column->addWidget(new SheetArea(sheetText(offer), this));
    column->addSpacing(6);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_cancel);
    row->addWidget(m_install);
    column->addLayout(row);

    connect(m_install, &QPushButton::clicked, this, &InstallDialog::agree);
    connect(m_cancel, &QPushButton::clicked, this, &QWidget::close);
    (new moveit(*this))->installOn(*this);
}

void InstallDialog::bringUp()
{
    if (!isVisible()) {
        setFixedSize(fitting(sizeHint()));
        wincenter();
        m_install->setFocus();
    }
    show();
    raise();
    activateWindow();
}

bool InstallDialog::isRipe() const
{
    return m_visible.isValid() && m_visible.hasExpired(ripeAfter.count());
}

void InstallDialog::agree()
{
    if (!isRipe())
        return;
    Q_EMIT agreed();
    close();
}

void InstallDialog::closeEvent(QCloseEvent *event)
{
    BorderlessWindow::closeEvent(event);
    Q_EMIT closed();
}

void InstallDialog::hideEvent(QHideEvent *event)
{
    m_visible.invalidate();
    BorderlessWindow::hideEvent(event);
}

// What is asked for a paint is on the screen: a window that is only mapped may not be there yet.
void InstallDialog::paintEvent(QPaintEvent *event)
{
    BorderlessWindow::paintEvent(event);
    if (m_visible.isValid())
        return;
    m_visible.start();
    Q_EMIT seen();
}

void InstallDialog::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape || (isEnter && m_cancel->hasFocus() && !event->isAutoRepeat()))
        close();
    else if (isEnter && !event->isAutoRepeat()) // a key that is held was pressed for something else
        agree();
    else if (!isEnter)
        BorderlessWindow::keyPressEvent(event);
}

// A press that came too early does not count at its release either.
bool InstallDialog::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool isPress = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick
        || type == QEvent::TouchBegin
        || (type == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space);
    if (watched == m_install && isPress && !isRipe())
        return true;
    return BorderlessWindow::eventFilter(watched, event);
}

} // namespace plum
