// The exact sheet of every starter app, as docs/security.md has it in its table.
#include "sheet/sheet_sentences.h"
#include "sheet/sheets.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

TEST(StarterApps, haveTheSheetsOfTheTable)
{
    QFile page(QStringLiteral(PLUM_DOCS_FOLDER "/security.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const QDir apps(QStringLiteral(PLUM_APPS_FOLDER));
    const QStringList names = apps.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    EXPECT_GT(names.size(), 10);
    for (const QString &name : names) {
        const auto computed = computeSheetOf(apps.filePath(name), test::allWords());
        ASSERT_TRUE(computed) << name.toStdString();
        EXPECT_TRUE(computed->problem.isEmpty()) << computed->problem.toStdString();
        const QString row = u"| `%1` | %2 |\n"_s.arg(name, sentences(computed->sheet).join(u' '));
        EXPECT_TRUE(text.contains(row)) << row.toStdString() << test::inJson(computed->sheet);
    }
}

} // namespace
} // namespace plum
