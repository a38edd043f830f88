#include "ui/manual/manual_page.h"

#include "look/theme.h"

#include <QCoreApplication>
#include <QFile>
#include <QFontDatabase>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <utility>
#include <vector>

// The pages are in this library; a static one has to be asked for them outside any namespace.
static void loadManualResource()
{
    Q_INIT_RESOURCE(manual);
}

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString read(const QString &fileName)
{
    QFile file(u":/manual/"_s + fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// As links to a heading are written: small letters, blanks as "-", no other signs.
QString anchorOf(const QString &heading)
{
    static const QRegularExpression signs(u"[^\\w\\s-]"_s, QRegularExpression::UseUnicodePropertiesOption);
    return heading.toLower().remove(signs).simplified().replace(u' ', u'-');
}

void layOutTables(QTextFrame &frame, const Theme &theme)
{
    for (QTextFrame *child : frame.childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(child)) {
            QTextTableFormat format = table->format();
            format.setBorder(1);
            format.setBorderBrush(theme.line);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setBorderCollapse(true);
            format.setCellPadding(5);
            format.setCellSpacing(0);
            format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
            table->setFormat(format);
        }
        layOutTables(*child, theme);
    }
}

// In the theme's colour: Qt's own blue cannot be read on a dark ground.
void colourLinks(const QTextBlock &block, const Theme &theme)
{
    std::vector<std::pair<int, int>> links; // position and length
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        if (!part.fragment().charFormat().anchorHref().isEmpty())
            links.emplace_back(part.fragment().position(), part.fragment().length());
    }
    QTextCharFormat format;
    format.setForeground(theme.accent);
    for (const auto &[position, length] : links) {
        QTextCursor cursor(block);
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(format);
    }
}

void layOutBlock(QTextBlock block, const Theme &theme)
{
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    if (format.headingLevel() > 0) {
        QTextCharFormat anchor;
        anchor.setAnchor(true);
        anchor.setAnchorNames({anchorOf(block.text())});
        cursor.select(QTextCursor::BlockUnderCursor);
        cursor.mergeCharFormat(anchor);
        format.setTopMargin(format.headingLevel() == 1 ? 0 : 14);
        format.setBottomMargin(6);
    } else if (format.hasProperty(QTextFormat::BlockCodeFence)
        || format.hasProperty(QTextFormat::BlockCodeLanguage)) {
        format.setBackground(theme.hover);
        format.setLeftMargin(8);
        QTextCharFormat code;
        code.setFontFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(code);
    } else {
        return;
    }
    QTextCursor(block).setBlockFormat(format);
}

} // namespace

QString manualPage(const QString &fileName)
{
    loadManualResource();
    //: The ending that pages in this language have in front of ".md", with its dot; empty for English.
    const QString language = QCoreApplication::translate("plum::ManualWindow", "(language of the manual)");
    QString translated = fileName;
    translated.replace(u".md"_s, u'.' + language + u".md"_s);
    const QString page = read(translated);
    return page.isEmpty() ? read(fileName) : page;
}

void layOutManual(QTextDocument &document, const QString &markdown, const Theme &theme)
{
    // What tells the tests how to run the examples is for them alone.
    static const QRegularExpression comments(
        u"<!--.*?-->\\n?"_s, QRegularExpression::DotMatchesEverythingOption);
    document.setMarkdown(QString(markdown).remove(comments));
    layOutTables(*document.rootFrame(), theme);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        colourLinks(block, theme);
        layOutBlock(block, theme);
    }
}

} // namespace plum
