#include "archive/app_archive.h"
#include "archive/unzip.h"
#include "platform/recording/recording_platform.h"
#include "support/temporary_files.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using plum::test::TemporaryFiles;

namespace {

class Generator : public testing::Test
{
protected:
    // The exit code.
    int generate(const QString &apps, const QStringList &options = {})
    {
        QProcess process;
        process.start(QStringLiteral(PLUM_STORE), options + QStringList{apps, files.folder() + u"/out"_s});
        process.waitForFinished();
        complaints = QString::fromUtf8(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QByteArray page(const QString &path) { return files.read(u"out/"_s + path); }

    QJsonArray packages()
    {
        return QJsonDocument::fromJson(page(u"plum/download/index.json"_s))
            .object()
            .value("packages"_L1)
            .toArray();
    }

    const QString fixtures = QStringLiteral(PLUM_APPS);
    const QString catalogue = u"plum/workflow_in/index.html"_s;
    TemporaryFiles files;
    QString complaints;
};

// Where the links and sources of all pages lead, by page.
QMultiMap<QString, QString> linksBelow(const QString &folder)
{
    static const QRegularExpression link(u"(?:href|src)=\"([^\"]*)\""_s);
    QMultiMap<QString, QString> links;
    QDirIterator each(folder, {u"*.html"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        QFile file(each.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto found = link.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext();)
            links.insert(file.fileName(), found.next().captured(1));
    }
    return links;
}

} // namespace

TEST_F(Generator, WritesThePagesThatTheLauncherOpens)
{
    ASSERT_EQ(generate(fixtures), 0) << qPrintable(complaints);
    for (const auto *path : {"plum/workflow_in/index.html", "plum/index.html",
             "products/tarnwick_plum/index.html", "topic/tarnwick_plum/index.html", "index.html"})
        EXPECT_TRUE(page(QString::fromLatin1(path)).startsWith("<!doctype html>")) << path;
}

TEST_F(Generator, EveryLinkOfEveryPageLeadsToAFile)
{
    ASSERT_EQ(generate(fixtures), 0);
    const QString out = files.folder() + u"/out"_s;
    const auto links = linksBelow(out);
    EXPECT_GT(links.size(), 30);
    for (auto link = links.cbegin(); link != links.cend(); ++link) {
        if (link->startsWith("http"_L1))
            continue;
        if (link->startsWith(u'#')) {
            QFile page(link.key());
            ASSERT_TRUE(page.open(QIODevice::ReadOnly));
            EXPECT_TRUE(page.readAll().contains("id=\"" + link->sliced(1).toUtf8() + '"'))
                << qPrintable(*link);
            continue;
        }
        QString path = out + QUrl(*link).path();
        if (path.endsWith(u'/'))
            path += u"index.html"_s;
        EXPECT_TRUE(QFileInfo(path).isFile()) << qPrintable(link.key()) << " -> " << qPrintable(*link);
    }
}

TEST_F(Generator, NoPlaceOfATemplateIsLeftEmpty)
{
    ASSERT_EQ(generate(fixtures), 0);
    QDirIterator each(
        files.folder() + u"/out"_s, {u"*.html"_s, u"*.svg"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        QFile file(each.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(file.readAll().contains("{{")) << qPrintable(file.fileName());
    }
}

TEST_F(Generator, TheIndexNamesSizeAndChecksumOfEveryPackage)
{
    ASSERT_EQ(generate(fixtures), 0);
    QStringList names;
    for (const QJsonValue &value : packages()) {
        const QString name = value["name"_L1].toString();
        const QByteArray package = page(u"plum/download/%1.wfp"_s.arg(name));
        EXPECT_FALSE(package.isEmpty());
        EXPECT_EQ(value["size"_L1].toInt(), package.size());
        EXPECT_EQ(value["sha256"_L1].toString().toLatin1(),
            QCryptographicHash::hash(package, QCryptographicHash::Sha256).toHex());
        names += name;
    }
    EXPECT_EQ(names, (QStringList{u"hello"_s, u"note"_s, u"tidy"_s}));
}

TEST_F(Generator, APackageHoldsTheWholeAppFolder)
{
    ASSERT_EQ(generate(fixtures), 0);
    plum::recording::RecordingPlatform platform;
    plum::Unzip reader(platform.paths(), platform.textCodec());
    ASSERT_TRUE(reader.Init(files.folder() + u"/out/plum/download/tidy.wfp"_s));
    ASSERT_TRUE(reader.unzip(files.folder() + u"/app"_s));
    EXPECT_EQ(reader.Count(), 4);
    for (const auto *name : {"main.wf", "about.json", "icon.svg", "pictures/corner.txt"}) {
        QFile original(fixtures + u"/tidy/"_s + QLatin1StringView(name));
        ASSERT_TRUE(original.open(QIODevice::ReadOnly));
        EXPECT_EQ(files.read(u"app/"_s + QLatin1StringView(name)), original.readAll()) << name;
    }
}

TEST_F(Generator, APackageIsWhatPlumkitMakesOfTheFolder)
{
    files.write(u"apps/good/main.wf"_s, "set.word \"x\"\r\n");
    files.write(u"apps/good/main.wf~"_s, "set.word\r\n");
    files.write(u"apps/good/.git/config"_s, "secret");
    ASSERT_EQ(generate(files.folder() + u"/apps"_s), 0) << qPrintable(complaints);
    EXPECT_TRUE(complaints.contains("good: left out .git/config (hidden)\n"_L1)) << qPrintable(complaints);
    EXPECT_TRUE(complaints.contains("good: left out main.wf~ (an old copy)\n"_L1)) << qPrintable(complaints);
    QString problem;
    const auto packed = plum::archiveOf(files.folder() + u"/apps/good"_s, problem);
    ASSERT_TRUE(packed) << qPrintable(problem);
    EXPECT_EQ(packed->files, QStringList{u"main.wf"_s});
    EXPECT_EQ(page(u"plum/download/good.wfp"_s), packed->content);
}

TEST_F(Generator, TheSameAppsGiveTheSameFiles)
{
    ASSERT_EQ(generate(fixtures), 0);
    const QByteArray index = page(u"plum/download/index.json"_s);
    ASSERT_EQ(generate(fixtures), 0);
    EXPECT_EQ(page(u"plum/download/index.json"_s), index);
}

TEST_F(Generator, TextsFromAppsAreNeverHtml)
{
    files.write(u"apps/evil/main.wf"_s, "//guide:<script>alert(1)</script>\r\nos.tips \"<b>\"\r\n");
    files.write(u"apps/evil/about.json"_s, R"({"title":"<i>t","summary":"<u>s","category":"\"><s>"})");
    ASSERT_EQ(generate(files.folder() + u"/apps"_s), 0);
    for (const QByteArray &html : {page(catalogue), page(u"plum/apps/evil/index.html"_s)}) {
        for (const char *tag : {"<script>", "<b>", "<i>t", "<u>", "<s>"})
            EXPECT_FALSE(html.contains(tag)) << tag;
    }
    EXPECT_TRUE(page(u"plum/apps/evil/index.html"_s).contains("&lt;script&gt;alert(1)"));
}

TEST_F(Generator, AGuideThatIsTheSummaryIsSaidOnce)
{
    files.write(u"apps/once/main.wf"_s, "//guide:Counts the windows\r\nos.tips \"<b>\"\r\n");
    ASSERT_EQ(generate(files.folder() + u"/apps"_s), 0);
    // The other place is the script itself.
    EXPECT_EQ(page(u"plum/apps/once/index.html"_s).count("Counts the windows"), 2);
}

TEST_F(Generator, AGuideThatIsAnAddressBecomesALink)
{
    ASSERT_EQ(generate(fixtures), 0);
    EXPECT_TRUE(page(u"plum/apps/tidy/index.html"_s).contains("<a href=\"https://example.org/tidy\""));
    EXPECT_TRUE(page(u"plum/apps/hello/index.html"_s).contains("Says hello in a tip."));
    EXPECT_TRUE(page(u"plum/apps/note/index.html"_s).contains("This app brings no guide."));
}

TEST_F(Generator, ADownloadBaseElsewhereStandsInThePages)
{
    ASSERT_EQ(generate(fixtures, {u"--download-base"_s, u"http://cdn.test/plum/download/"_s}), 0);
    EXPECT_TRUE(page(catalogue).contains("href=\"http://cdn.test/plum/download/hello.wfp\""));
}

TEST_F(Generator, AnAppThatCannotBePublishedIsNamedAndLeftOut)
{
    files.write(u"apps/good/main.wf"_s, "set.word \"x\"\r\n");
    files.write(u"apps/no script/readme"_s, "x");
    files.write(u"apps/empty/readme"_s, "x");
    EXPECT_EQ(generate(files.folder() + u"/apps"_s), 1);
    EXPECT_TRUE(complaints.contains("no script"_L1));
    EXPECT_TRUE(complaints.contains("empty: there is no main.wf"_L1));
    EXPECT_EQ(packages().size(), 1);
}

TEST_F(Generator, ALinkInAnAppFolderIsNotFollowed)
{
    files.write(u"apps/app/main.wf"_s, "set.word \"x\"\r\n");
    const QString secret = files.write(u"secret"_s, "secret");
    ASSERT_TRUE(QFile::link(secret, files.folder() + u"/apps/app/leak"_s));
    ASSERT_EQ(generate(files.folder() + u"/apps"_s), 0);
    EXPECT_FALSE(page(u"plum/download/app.wfp"_s).contains("secret"));
}

TEST_F(Generator, WithoutAppsThereIsNoStore)
{
    EXPECT_EQ(generate(files.folder() + u"/nowhere"_s), 1);
    EXPECT_FALSE(QFileInfo::exists(files.folder() + u"/out"_s));
}
