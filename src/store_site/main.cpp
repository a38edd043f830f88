#include "store_site.h"
#include "version/version.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

void say(const QString &line)
{
    std::fprintf(stderr, "plum-store: %s\n", qUtf8Printable(line));
}

bool write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush()
        && file.commit())
        return true;
    say(u"%1: %2"_s.arg(path, file.errorString()));
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Builds a store out of a folder of apps: plain files for any web server."_s);
    QCoreApplication::setApplicationName(u"plum-store"_s);
    QCoreApplication::setApplicationVersion(QString::fromUtf8(version));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption base(u"download-base"_s,
        u"Where the packages will be, ending in /plum/download/ (default: on the same site)."_s, u"address"_s,
        u"/plum/download/"_s);
    parser.addOption(base);
    parser.addPositionalArgument(u"apps"_s, u"The folder of apps, one folder an app."_s);
    parser.addPositionalArgument(
        u"output"_s, u"Where the store goes; files of the same names are replaced."_s);
    parser.process(application);
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 2) {
        std::fputs(qUtf8Printable(parser.helpText()), stderr);
        return EXIT_FAILURE;
    }

    const QFileInfoList appFolders
        = QDir(folders[0]).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    std::vector<PublishedApp> apps;
    bool isWhole = true;
    for (const QFileInfo &folder : appFolders) {
        QString problem;
        if (std::optional<PublishedApp> app = readApp(folder.filePath(), problem)) {
            apps.push_back(std::move(*app));
        } else {
            say(problem);
            isWhole = false;
        }
    }
    if (apps.empty()) {
        say(u"there are no apps in %1"_s.arg(folders[0]));
        return EXIT_FAILURE;
    }
    for (const auto &[path, content] : buildSite(apps, parser.value(base)))
        isWhole = write(folders[1] + u'/' + path, content) && isWhole;
    return isWhole ? EXIT_SUCCESS : EXIT_FAILURE;
}
