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

QStringList allOf(const QString &page, const QString &pattern)
{
    const QRegularExpression expression(
        pattern, QRegularExpression::DotMatchesEverythingOption | QRegularExpression::MultilineOption);
    QStringList all;
    for (auto found = expression.globalMatch(page); found.hasNext();)
        all += found.next().captured();
    return all;
}

// The examples of a page, with what the tests do with them.
QStringList examplesOf(const QString &page)
{
    return allOf(page, u"(<!--[^>]*-->\\n)?```plum(-check)?\\n.*?```"_s);
}

// The commands of the reference with their fields and words, and the rules of the checker.
QStringList namesOf(const QString &page)
{
    return allOf(page, u"^(##+ `?[a-z][^`\\n]*|- [a-z ]+:|  - `[^`]+`)"_s);
}

// Figures, which change with what they count.
QStringList figuresOf(const QString &page)
{
    QStringList figures = allOf(page, u"[0-9]{4,}|[0-9]+,[0-9]{3}"_s);
    figures.sort();
    return figures;
}

// Every page is there in English and in Chinese.
const QStringList inBoth{u"scripting.md"_s, u"commands.md"_s, u"checks.md"_s, u"edition-1.md"_s,
    u"tasks.md"_s, u"editors.md"_s, u"store.md"_s, u"security.md"_s};

QString inChinese(QString page)
{
    return page.replace(u".md"_s, u".zh.md"_s);
}

QStringList allPages()
{
    QStringList pages;
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

TEST(ManualPage, bothLanguagesNameTheSameCommandsAndRules)
{
    for (const QString &page : {u"commands.md"_s, u"checks.md"_s}) {
        SCOPED_TRACE(page.toStdString());
        const QStringList english = namesOf(manualPage(page));
        EXPECT_GT(english.size(), 40);
        EXPECT_EQ(english, namesOf(manualPage(inChinese(page))));
        EXPECT_EQ(figuresOf(manualPage(page)), figuresOf(manualPage(inChinese(page))));
    }
}

TEST(ManualPage, aPageThatIsNotThereIsEmpty)
{
    EXPECT_EQ(manualPage(u"nothing.md"_s), QString());
}

} // namespace plum
