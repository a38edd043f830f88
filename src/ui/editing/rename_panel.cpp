#include "ui/editing/rename_panel.h"

#include "look/picture_button.h"
#include "ui/controls/file_entry.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize panelSize(440, 176);

} // namespace

RenamePanel::RenamePanel(QWidget *parent)
    : QWidget(parent)
    , Text1(new QLineEdit(this))
    , Text12(new FileEntry(u"Text12"_s, this))
{
    setObjectName(u"editnamebox"_s);
    setAccessibleName(tr("Rename"));
    Text1->setObjectName(u"Text1"_s);
    Text1->setReadOnly(true);
    Text1->setAccessibleName(tr("Old keyword"));
    Text12->setAcceptDrops(false);
    Text12->setPlaceholderText(tr("New keyword"));
    Text12->setAccessibleName(tr("New keyword"));
    auto *Label6 = new QLabel(tr("Rename"), this);
    Label6->setObjectName(u"Label6"_s);
    Label6->setProperty("heading", true);
    using Picture = PictureButton::Picture;
    auto *Image10 = new PictureButton(u"Image10"_s, Picture::Confirm, tr("Rename"), this);
    auto *Image11 = new PictureButton(u"Image11"_s, Picture::Back, tr("Back"), this);

    auto *head = new QHBoxLayout;
    head->addWidget(Image11);
    head->addWidget(Label6, 1);
    head->addWidget(Image10);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 10, 14, 14);
    column->setSpacing(10);
    column->addLayout(head);
    column->addWidget(Text1);
    column->addWidget(Text12);
    column->addStretch();

    connect(Image10, &PictureButton::clicked, this, &RenamePanel::confirmed);
    connect(Text12, &FileEntry::enterPressed, this, &RenamePanel::confirmed);
    connect(Image11, &PictureButton::clicked, this, &RenamePanel::back);
}

QSize RenamePanel::sizeHint() const
{
    return panelSize;
}

void RenamePanel::open(const QString &keyword)
{
    Text1->setText(keyword);
    Text12->clear();
}

QString RenamePanel::oldKeyword() const
{
    return Text1->text();
}

QString RenamePanel::newKeyword() const
{
    return Text12->text();
}

void RenamePanel::takeFocus()
{
    Text12->setFocus();
}

} // namespace plum
