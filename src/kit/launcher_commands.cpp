#include "kit/launcher_commands.h"

#include "library/app_folders.h"
#include "library/app_list_file.h"
#include "library/launcher_requests.h"
#include "library/library_adoption.h"
#include "library/library_change.h"
#include "library/single_instance.h"
#include "platform/launcher_call.h"
#include "platform/paths.h"
#include "platform/platform.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int isDone = 0;
constexpr int isRefused = 1;
constexpr int isUnusable = 2;

constexpr char launcherUsage[] = R"(Has the launcher do something; it is started where none runs.

  plumkit launcher show         brings it to the front
  plumkit launcher new          opens the panel for a new app
  plumkit launcher store        opens the store
  plumkit launcher run KEYWORD  runs an app
  plumkit launcher stop         ends what runs
  plumkit launcher --help       shows this text

Ends with status
  0    when it was asked
  1    when it cannot be, or there is none to stop
  2    when the words are unusable or there is no such app
)";

constexpr char adoptUsage[]
    = R"(Takes over the apps and settings of another program folder, as of a portable Plum.

  plumkit adopt FOLDER          copies what FOLDER/config has into this Plum's own library
  plumkit adopt --help          shows this text

FOLDER stays as it is. Nothing that is here is replaced: an app with a keyword that another one has here gets a number
behind it, settings that are here stay. What became of everything stands on standard output. Ends with status
  0    when all of it is here
  1    when something could not be copied, or a launcher runs here
  2    when FOLDER is no program folder
)";

struct Word
{
    QLatin1StringView text;
    LauncherRequest::Kind kind;
};

constexpr std::array words{
    Word{QLatin1StringView("new"), LauncherRequest::Kind::NewApp},
    Word{QLatin1StringView("store"), LauncherRequest::Kind::Store},
    Word{QLatin1StringView("run"), LauncherRequest::Kind::Run},
    Word{QLatin1StringView("stop"), LauncherRequest::Kind::Stop},
};

int refuse(int status, const QString &problem)
{
    std::fprintf(stderr, "plumkit: %s\n", qUtf8Printable(problem));
    return status;
}

// One library, with the launcher that runs on it or can be started on it.
class Home
{
public:
    explicit Home(const char *programPath)
        : platform(createPlatform(QFile::decodeName(programPath)))
        , folders(platform->paths())
    {
    }

    // A start finds the launcher that runs, and fetches it.
    int start() const
    {
        return QProcess::startDetached(folders.onDisk(folders.file(u"plum"_s)), {})
            ? isDone
            : refuse(isRefused, u"the launcher cannot be asked"_s);
    }

    bool callRunning() const
    {
        const std::optional<qint64> running = SingleInstance(folders).running();
        return running && LauncherCall::call(*running, LauncherCall::Kind::Requests);
    }

    const std::unique_ptr<Platform> platform;
    const AppFolders folders;
};

// An app that runs and the end of one need no launcher in front.
bool needsWindow(LauncherRequest::Kind kind)
{
    return kind != LauncherRequest::Kind::Run && kind != LauncherRequest::Kind::Stop;
}

int ask(const Home &home, const LauncherRequest &request)
{
    const std::optional<QString> left = LauncherRequests(home.folders).leave(request);
    if (!left)
        return refuse(isRefused, u"the launcher cannot be asked"_s);
    if (!needsWindow(request.kind) && home.callRunning())
        return isDone;
    if (request.kind != LauncherRequest::Kind::Stop)
        return home.start();
    QFile::remove(*left);
    return refuse(isRefused, u"no launcher runs"_s);
}

bool isApp(const Home &home, const QString &keyword)
{
    const std::optional<QString> folder = home.folders.appOnDisk(keyword);
    return folder && QFileInfo(*folder).isDir();
}

void print(const QString &heading, const QStringList &names)
{
    for (const QString &name : names)
        std::fputs(qUtf8Printable(heading.arg(name) + u'\n'), stdout);
}

} // namespace

int openFile(const char *programPath, const QStringList &arguments)
{
    const QString path = arguments.value(0);
    const bool isPackage = path.endsWith(".wfp"_L1);
    if (arguments.size() != 1 || (!isPackage && !path.endsWith(".wf"_L1)))
        return refuse(isUnusable, u"which file? A package's name ends in .wfp, a script's in .wf."_s);
    const QFileInfo file(path);
    if (!file.isFile())
        return refuse(isUnusable, u"there is no file %1"_s.arg(path));
    return ask(Home(programPath),
        {isPackage ? LauncherRequest::Kind::Install : LauncherRequest::Kind::OpenScript,
            file.absoluteFilePath()});
}

int tellLauncher(const char *programPath, const QStringList &arguments)
{
    const QString what = arguments.value(0);
    if (what == "--help"_L1) {
        std::fputs(launcherUsage, stdout);
        return isDone;
    }
    if (what == "show"_L1 && arguments.size() == 1)
        return Home(programPath).start();
    const auto *word = std::ranges::find(words, what, &Word::text);
    const bool takesKeyword = what == "run"_L1;
    if (word == words.end() || arguments.size() != (takesKeyword ? 2 : 1)) {
        std::fputs(launcherUsage, stderr);
        return isUnusable;
    }
    const Home home(programPath);
    const QString keyword = arguments.value(1);
    if (takesKeyword && !isApp(home, keyword))
        return refuse(isUnusable, u"there is no app \"%1\""_s.arg(keyword));
    return ask(home, {word->kind, keyword});
}

int adopt(const char *programPath, const QStringList &arguments)
{
    if (arguments == QStringList(u"--help"_s)) {
        std::fputs(adoptUsage, stdout);
        return isDone;
    }
    if (arguments.size() != 1) {
        std::fputs(adoptUsage, stderr);
        return isUnusable;
    }
    const Home home(programPath);
    SingleInstance instance(home.folders);
    if (!instance.claim())
        return refuse(isRefused, u"a launcher runs here; choose Exit in its menu first"_s);
    AppListFile listFile(home.platform->paths(), home.platform->textCodec());
    const LibraryAdoption adoption(
        {home.platform->paths(), home.platform->textCodec(), {home.folders, listFile, &moveToTrash}});
    const std::optional<LibraryAdoption::Outcome> outcome = adoption.adopt(arguments.front());
    if (!outcome)
        return refuse(isUnusable,
            u"%1 is no other program folder: it has no config/apps of its own"_s.arg(arguments.front()));
    print(u"app: %1"_s, outcome->apps);
    print(u"app, here already: %1"_s, outcome->present);
    print(u"settings: %1"_s, outcome->settings);
    print(u"settings, kept as they are here: %1"_s, outcome->keptSettings);
    for (const QString &name : outcome->failed)
        refuse(isRefused, u"%1 could not be copied"_s.arg(name));
    return outcome->failed.isEmpty() ? isDone : isRefused;
}

} // namespace plum::kit
