#include "ui/manual/manual_page.h"

#include "look/theme.h"

#include <QDir>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

void layOut(QTextDocument &document, const QString &page)
{
    layOutManual(document, manualPage(page), Theme::of(QGuiApplication::palette()));
}

QSet<QString> anchorsOf(const QTextDocument &document)
{
    QSet<QString> anchors;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            for (const QString &name : part.fragment().charFormat().anchorNames())
                anchors += name;
        }
    }
    return anchors;
}

QStringList linksOf(const QTextDocument &document)
{
    QStringList links;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (format.isAnchor() && !format.anchorHref().isEmpty())
                links += format.anchorHref();
        }
    }
    return links;
}

// The examples of a page, with what the tests do with them.
QStringList examplesOf(const QString &page)
{
    static const QRegularExpression example(
        u"(<!--[^>]*-->\\n)?```plum\\n.*?```"_s, QRegularExpression::DotMatchesEverythingOption);
    QStringList examples;
    for (auto found = example.globalMatch(page); found.hasNext();)
        examples += found.next().captured();
    return examples;
}

// Those that are there in Chinese, too.
const QStringList inBoth{
    u"scripting.md"_s, u"edition-1.md"_s, u"tasks.md"_s, u"editors.md"_s, u"store.md"_s, u"security.md"_s};

QString inChinese(QString page)
{
    return page.replace(u".md"_s, u".zh.md"_s);
}

QStringList allPages()
{
    QStringList pages{u"checks.md"_s, u"commands.md"_s};
    for (const QString &page : inBoth)
        pages += {page, inChinese(page)};
    return pages;
}

const QStringList pages = allPages();

} // namespace

TEST(ManualPage, everyPageIsThereAndLaidOut)
{
    for (const QString &page : pages) {
        QTextDocument document;
        layOut(document, page);
        EXPECT_GT(document.blockCount(), 10) << qPrintable(page);
        EXPECT_EQ(document.begin().blockFormat().headingLevel(), 1) << qPrintable(page);
        EXPECT_FALSE(document.toPlainText().contains(u"shows:"_s))
            << qPrintable(page) << " shows what is meant for its tests";
    }
}

TEST(ManualPage, everyLinkLeadsSomewhere)
{
    for (const QString &page : pages) {
        QTextDocument document;
        layOut(document, page);
        for (const QString &link : linksOf(document)) {
            const QString target = link.section(u'#', 0, 0);
            const QString heading = link.section(u'#', 1);
            QTextDocument other;
            layOut(other, target.isEmpty() ? page : target);
            EXPECT_GT(other.characterCount(), 1) << qPrintable(page) << ": " << qPrintable(link);
            EXPECT_TRUE(heading.isEmpty() || anchorsOf(other).contains(heading))
                << qPrintable(page) << ": " << qPrintable(link);
        }
    }
}

TEST(ManualPage, bothLanguagesHaveTheSameExamplesAndSections)
{
    const QRegularExpression headings(u"^##+ "_s, QRegularExpression::MultilineOption);
    const QRegularExpression rows(u"^\\|"_s, QRegularExpression::MultilineOption);
    const QRegularExpression items(u"^- "_s, QRegularExpression::MultilineOption);
    for (const QString &page : inBoth) {
        SCOPED_TRACE(page.toStdString());
        const QString english = manualPage(page);
        const QString chinese = manualPage(inChinese(page));
        EXPECT_EQ(examplesOf(english), examplesOf(chinese));
        EXPECT_EQ(english.count(headings), chinese.count(headings));
        EXPECT_EQ(english.count(rows), chinese.count(rows));
        EXPECT_EQ(english.count(items), chinese.count(items));
        EXPECT_NE(english, chinese);
    }
}

TEST(ManualPage, aPageThatIsNotThereIsEmpty)
{
    EXPECT_EQ(manualPage(u"nothing.md"_s), QString());
}

} // namespace plum
