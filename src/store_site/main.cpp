#include "app_review.h"
#include "key_folder.h"
#include "next_index.h"
#include "store_files.h"
#include "store_signing.h"
#include "store_site.h"
#include "version/version.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <array>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

void say(const QString &line)
{
    std::fprintf(stderr, "plum-store: %s\n", qUtf8Printable(line));
}

// The options of all commands; what one has no use for is not looked at.
struct Options
{
    QString downloadBase;
    QString keys;
    QString reason;
    SignedDays days;
};

struct AppsToPublish
{
    std::vector<PublishedApp> apps;
    QStringList unpublished; // names
};

AppsToPublish readApps(const QString &folder)
{
    const AppReview review;
    AppsToPublish read;
    const QFileInfoList folders = QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &each : folders) {
        QString problem;
        std::optional<PublishedApp> app = readApp(each.filePath(), problem);
        bool hasError = false;
        if (app)
            std::fputs(qUtf8Printable(review.review(each.filePath(), *app, hasError)), stderr);
        if (hasError)
            problem = u"%1: a script with an error is not published"_s.arg(each.filePath());
        if (app && !hasError) {
            for (const QString &name : std::as_const(app->package.leftOut))
                say(u"%1: left out %2"_s.arg(each.filePath(), name));
            read.apps.push_back(std::move(*app));
        } else {
            say(problem);
            read.unpublished += each.fileName();
        }
    }
    return read;
}

int build(const QStringList &arguments, const Options &options)
{
    const QString &store = arguments[1];
    AppsToPublish read = readApps(arguments[0]);
    if (read.apps.empty()) {
        say(u"there are no apps in %1"_s.arg(arguments[0]));
        return EXIT_FAILURE;
    }
    const NextIndex next = nextIndex(indexOf(store).value_or(StoreIndex()), read.apps, read.unpublished,
        [&](const QString &path) { return readFile(downloadsOf(store) + path); });
    bool isWhole = read.unpublished.isEmpty() && next.problems.isEmpty();
    for (const QString &problem : next.problems)
        say(problem);

    QString problem;
    const auto write = [&](const QString &path, const QByteArray &content) {
        if (!writeFile(path, content, problem)) {
            say(problem);
            isWhole = false;
        }
    };
    for (const auto &[path, content] : next.files)
        write(downloadsOf(store) + path, content);
    for (const auto &[path, content] : buildSite(read.apps, next.index, options.downloadBase))
        write(store + u'/' + path, content);
    for (const QString &path : next.withdrawn)
        QFile::remove(downloadsOf(store) + path);
    return isWhole ? EXIT_SUCCESS : EXIT_FAILURE;
}

int done(bool isDone, const QString &problem)
{
    if (!isDone)
        say(problem);
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}

int makeKeys(const QStringList &arguments, const Options &)
{
    QString problem;
    const KeyFolder keys(arguments[0]);
    if (!keys.make(problem))
        return done(false, problem);
    std::fputs(qUtf8Printable(u"PLUM_STORE_ROOT_KEYS=%1\n"_s.arg(
                   QString::fromLatin1(keys.key(Role::Root)->publicKey().toHex()))),
        stdout);
    return EXIT_SUCCESS;
}

int sign(const QStringList &arguments, const Options &options)
{
    QString problem;
    if (options.keys.isEmpty())
        return done(false, u"--keys says where the keys are"_s);
    return done(signStore(arguments[0], KeyFolder(options.keys), options.days, problem), problem);
}

int rotate(const QStringList &arguments, const Options &)
{
    QString problem;
    const auto role = roleNamed(arguments[1]);
    if (!role)
        return done(false, u"a role is root, index or timestamp, not %1"_s.arg(arguments[1]));
    return done(KeyFolder(arguments[0]).rotate(*role, problem), problem);
}

int revoke(const QStringList &arguments, const Options &options)
{
    QString problem;
    return done(takeBack(arguments[0], arguments[1], arguments.value(2), options.reason, problem), problem);
}

struct Command
{
    QLatin1StringView name; // empty: that of building, which has none
    qsizetype fewest; // arguments
    qsizetype most;
    int (*run)(const QStringList &arguments, const Options &options);
};

constexpr std::array commands{
    Command{"keys"_L1, 1, 1, makeKeys},
    Command{"sign"_L1, 1, 1, sign},
    Command{"rotate"_L1, 2, 2, rotate},
    Command{"revoke"_L1, 2, 3, revoke},
    Command{{}, 2, 2, build},
};

constexpr QLatin1StringView about(R"(Builds a store out of a folder of apps: plain files for any web server.

  plum-store APPS STORE                   build or update the store
  plum-store keys KEYS                    make the store's keys
  plum-store sign STORE --keys KEYS       sign what the store has; again every few days
  plum-store rotate KEYS ROLE             give root, index or timestamp a new key
  plum-store revoke STORE NAME [VERSION]  take a version back
)");

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"plum-store"_s);
    QCoreApplication::setApplicationVersion(QString::fromUtf8(version));
    QCommandLineParser parser;
    parser.setApplicationDescription(about);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption base(u"download-base"_s,
        u"Where the packages will be, ending in /plum/download/ (default: on the same site)."_s, u"address"_s,
        u"/plum/download/"_s);
    const QCommandLineOption keys(u"keys"_s, u"sign: the folder of the keys."_s, u"folder"_s);
    const QCommandLineOption reason(u"reason"_s, u"revoke: a sentence that says why."_s, u"sentence"_s);
    const QCommandLineOption days(
        u"days"_s, u"sign: for how long nobody has to sign again (default: 7)."_s, u"number"_s, u"7"_s);
    parser.addOptions({base, keys, reason, days});
    parser.process(application);

    QStringList arguments = parser.positionalArguments();
    const auto *command = std::ranges::find_if(commands,
        [&](const Command &each) { return each.name.isEmpty() || arguments.value(0) == each.name; });
    if (!command->name.isEmpty())
        arguments.removeFirst();
    Options options{parser.value(base), parser.value(keys), parser.value(reason), {}};
    bool isNumber = false;
    options.days.timestamp = parser.value(days).toInt(&isNumber);
    if (arguments.size() < command->fewest || arguments.size() > command->most || !isNumber
        || options.days.timestamp < 1) {
        std::fputs(qUtf8Printable(parser.helpText()), stderr);
        return EXIT_FAILURE;
    }
    return command->run(arguments, options);
}
