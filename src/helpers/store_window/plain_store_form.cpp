#include "plain_store_form.h"

#include "helpers/browser/page_file.h"
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

} // namespace

PlainStoreForm::PlainStoreForm(const QUrl &downloadBase, bool dark)
    : StoreForm(dark)
    , m_downloadBase(downloadBase)
    , m_name(new QLineEdit)
    , m_install(new QPushButton(tr("Install")))
{
    auto *content = new QWidget;
    content->setObjectName(u"content"_s);
    auto *explanation = new QLabel(tr("This Plum was built without a browser of its own, so the pages of the "
                                      "store open in your default browser."));
    explanation->setObjectName(u"explanation"_s);
    auto *advice = new QLabel(tr("To install an app, type its name as the store shows it."));
    for (QLabel *label : {explanation, advice})
        label->setWordWrap(true);
    auto *again = new QPushButton(tr("Open the page again"));
    again->setObjectName(u"again"_s);
    m_name->setObjectName(u"packageName"_s);
    m_name->setPlaceholderText(tr("Name of an app"));
    m_install->setObjectName(u"install"_s);
    m_install->setEnabled(false);

    auto *row = new QHBoxLayout;
    row->addWidget(m_name, 1);
    row->addWidget(m_install);
    auto *column = new QVBoxLayout;
    column->addStretch();
    column->addWidget(explanation);
    column->addWidget(again, 0, Qt::AlignLeft);
    column->addSpacing(24);
    column->addWidget(advice);
    column->addLayout(row);
    column->addStretch();
    explanation->setFixedWidth(columnWidth);
    auto *middle = new QHBoxLayout(content);
    middle->addStretch();
    middle->addLayout(column);
    middle->addStretch();

    connect(again, &QPushButton::clicked, this, [this] { Q_EMIT outsideOpened(m_page); });
    connect(m_name, &QLineEdit::textChanged, this,
        [this](const QString &name) { m_install->setEnabled(isPackageName(name)); });
    connect(m_name, &QLineEdit::returnPressed, this, &PlainStoreForm::install);
    connect(m_install, &QPushButton::clicked, this, &PlainStoreForm::install);

    auto *whole = new QVBoxLayout;
    whole->addWidget(content);
    build(whole);
}

void PlainStoreForm::showAddress(const QUrl &address)
{
    m_page = address;
    Q_EMIT outsideOpened(m_page);
}

void PlainStoreForm::writePage(const QString &html)
{
    showAddress(writePageFile(html));
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

std::unique_ptr<StoreForm> makeStoreForm(const QUrl &downloadBase, bool dark)
{
    return std::make_unique<PlainStoreForm>(downloadBase, dark);
}

} // namespace plum
