#include "plain_store_form.h"

#include "helpers/browser/page_file.h"
#include "look/placeholder_ink.h"
#include "sent_page_policy.h"
#include "store/protocol/package_link.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr int columnWidth = 420; // pixels
constexpr int edges = 40; // at both sides of it, at least

// Tells the browser to let the page have what it brought along, and nothing else. A declaration that stands
// first has to stay first.
QString withoutConnections(const QString &html)
{
    const qsizetype end
        = html.trimmed().startsWith("<!doctype"_L1, Qt::CaseInsensitive) ? html.indexOf(u'>') + 1 : 0;
    return html.first(end) + u"<meta http-equiv=\"Content-Security-Policy\" content=\""_s + sentPagePolicy
        + u"\">"_s + html.sliced(end);
}

} // namespace

PlainStoreForm::PlainStoreForm(const QUrl &downloadBase)
    : m_downloadBase(downloadBase)
    , m_explanation(new QLabel)
    , m_open(new QPushButton)
    , m_name(new QLineEdit)
    , m_install(new QPushButton(tr("Install")))
{
    auto *content = new QWidget;
    content->setObjectName(u"content"_s);
    m_explanation->setObjectName(u"explanation"_s);
    auto *advice = new QLabel(tr("To install an app, type its name as the store shows it."));
    for (QLabel *label : {m_explanation, advice})
        label->setWordWrap(true);
    m_open->setObjectName(u"again"_s);
    m_name->setObjectName(u"packageName"_s);
    m_name->setPlaceholderText(tr("Name of an app"));
    m_name->setAccessibleName(tr("Name of an app"));
    keepPlaceholderReadable(*m_name);
    m_install->setObjectName(u"install"_s);
    m_install->setEnabled(false);

    auto *row = new QHBoxLayout;
    row->addWidget(m_name, 1);
    row->addWidget(m_install);
    auto *column = new QVBoxLayout;
    column->addStretch();
    column->addWidget(m_explanation);
    column->addWidget(m_open, 0, Qt::AlignLeft);
    column->addSpacing(24);
    column->addWidget(advice);
    column->addLayout(row);
    column->addStretch();
    m_explanation->setFixedWidth(fitting({columnWidth + edges, 0}).width() - edges);
    auto *middle = new QHBoxLayout(content);
    middle->addStretch();
    middle->addLayout(column);
    middle->addStretch();

    connect(m_open, &QPushButton::clicked, this, &PlainStoreForm::openPage);
    connect(m_name, &QLineEdit::textChanged, this,
        [this](const QString &name) { m_install->setEnabled(isPackageName(name)); });
    connect(m_name, &QLineEdit::returnPressed, this, &PlainStoreForm::install);
    connect(m_install, &QPushButton::clicked, this, &PlainStoreForm::install);

    auto *whole = new QVBoxLayout;
    whole->addWidget(content);
    build(whole);
    clearPage();
}

void PlainStoreForm::showAddress(const QUrl &address)
{
    clearPage();
    m_page = address;
    openPage();
}

// A page that another program has sent opens when the user wants it, not by itself.
void PlainStoreForm::writePage(const QString &html)
{
    m_sent = withoutConnections(html);
    m_explanation->setText(tr("Another program sent a page. It is not from the store. This Plum was built "
                              "without a browser of its own, so it opens in your default browser."));
    m_open->setText(tr("Open it"));
    setUsualCaption(tr("A page from another program"));
}

void PlainStoreForm::clearPage()
{
    m_sent.clear();
    m_explanation->setText(tr("This Plum was built without a browser of its own, so the pages of the store "
                              "open in your default browser."));
    m_open->setText(tr("Open the page again"));
    setUsualCaption(u"Plum"_s);
}

void PlainStoreForm::openPage()
{
    if (!m_sent.isEmpty())
        m_page = writePageFile(std::exchange(m_sent, {}));
    Q_EMIT outsideOpened(m_page);
}

void PlainStoreForm::bringUp()
{
    StoreForm::bringUp();
    m_name->setFocus();
}

void PlainStoreForm::install()
{
    if (!isPackageName(m_name->text()))
        return;
    QUrl package = m_downloadBase;
    package.setPath(package.path() + m_name->text() + packageEnding, QUrl::DecodedMode);
    Q_EMIT packageFollowed(package);
}

std::unique_ptr<StoreForm> makeStoreForm(const QUrl &downloadBase)
{
    return std::make_unique<PlainStoreForm>(downloadBase);
}

} // namespace plum
