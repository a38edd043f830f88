#include "program.h"

#include "commands/notices.h"
#include "engine/editions/script_error.h"
#include "engine/run_time_error.h"
#include "flight/flight_page.h"
#include "library/install_offer.h"
#include "library/launcher_options.h"
#include "library/settings_file.h"
#include "platform/paths.h"
#include "ui/asking/message_boxes.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Without the program's name in front, as editors and shells find their way to the place.
void sayMistakes(const ScriptError &error)
{
    for (const ScriptMistake &mistake : error.mistakes())
        std::fprintf(stderr, "%s\n", qUtf8Printable(mistake.toText()));
    std::fflush(stderr);
}

void say(const QString &line)
{
    StandardErrorNotices().tell(line);
}

// A script that was loaded as one long line was most likely saved with line feeds alone.
bool looksLikeLineFeedsOnly(const QStringList &lines)
{
    return lines.size() == 1 && lines.front().contains(u'\n');
}

} // namespace

Program::Program(const QString &programPath, bool hasDesktop, Purpose purpose)
    : m_platform(createPlatform(programPath))
    , m_picking(*m_platform)
    , m_hand(*m_platform, m_stop, [this] { return m_scripts.state().currentKeyword; })
    , m_addresses(StoreAddresses::built())
    , m_folders(m_platform->paths())
    , m_listFile(m_platform->paths(), m_platform->textCodec())
    , m_grants({m_platform->paths(), m_platform->textCodec(), [this] { return m_scripts.vocabulary(); }})
    , m_installer({.paths = m_platform->paths(),
          .codec = m_platform->textCodec(),
          .changes = {m_folders, m_listFile, &moveToTrash},
          .arrives = [this](const QString &keyword,
                         const QString &folder) { return m_grants.arrive(keyword, folder); }})
    , m_questions(m_platform->windows())
    , m_ui({.paths = m_platform->paths(),
          .codec = m_platform->textCodec(),
          .shell = m_platform->shell(),
          .store = m_door,
          .installer = m_installer,
          .askInstall = [this](const InstallOffer &offer,
                            std::function<void()> install) { askInstall(offer, std::move(install)); },
          .sites = {m_addresses.site.toString(QUrl::StripTrailingSlash),
              m_addresses.site.toString(QUrl::StripTrailingSlash)},
          .endProcess = [this](int status) { end(status); },
          .report = &say,
          .hasDesktop = hasDesktop,
          .reportMistakes = &sayMistakes,
          .stop = m_stop,
          .watchHand = [this](bool isWatching) { m_hand.setWatching(isWatching); },
          .releaseKeys = [this] { m_hand.releaseKeys(); },
          .inputPause = [this] { return m_hand.gate().pause(); },
          .goOn = [this] { m_hand.gate().goOn(); },
          .mayRun = [this](const QString &keyword) { return mayRun(keyword); },
          .keepWhatHappened = [this](const QString &sentence) { keepWhatHappened(sentence); },
          .showWhatHappened = [this] { showWhatHappened(); },
          .tellSheet = [this](const QString &keyword) { tellSheet(keyword); },
          .pick = [this](const PickRequest &request,
                      std::function<void(const PickedText &)> then) { m_picking.pick(request, then); }})
    , m_channel(m_platform->clipboard())
    , m_storeWindow({.program = StoreProcess::besideThisProgram(),
          .downloadBase = m_addresses.downloadBase,
          .isSigned = m_addresses.isSigned()})
    , m_transfers(m_platform->paths(), m_platform->textCodec())
    , m_store({m_storeWindow, m_transfers, m_channel, m_host, m_platform->shell(), m_platform->paths(),
          m_installer, m_addresses, [this] { return m_updates.apps(); }})
    , m_updates({.paths = m_platform->paths(),
          .codec = m_platform->textCodec(),
          .store = m_store,
          .addresses = m_addresses,
          .isIdle = [this] { return !m_ui.isRunning(); },
          .ask = [this](const InstallOffer &offer,
                     std::function<void()> install) { askInstall(offer, std::move(install)); }})
    , m_shell(m_platform->shell(), m_channel)
    , m_flight(purpose == Purpose::Launcher ? std::make_unique<Flight>(*m_platform, m_shell) : nullptr)
    , m_scripts({.platform = m_flight ? static_cast<Platform &>(m_flight->platform) : *m_platform,
          .shell = m_flight ? static_cast<Shell &>(m_flight->shell) : m_shell,
          .launcher = m_ui,
          .storePage = m_store,
          .executableName = QFileInfo(programPath).completeBaseName(),
          .stop = &m_stop,
          .gate = &m_hand.gate(),
          .refused = [this](const QString &sentence) { m_ui.news().sayRefused(sentence); },
          .searches = m_flight ? &m_flight->recorder : nullptr})
    , m_instance(m_folders)
    , m_requests(m_folders)
{
    if (m_flight) {
        m_scripts.state().observer = &m_flight->recorder;
        m_flight->recorder.setStop(m_stop);
        m_flight->takePicturesWhere(
            [this] { return wantsPictures(m_platform->paths(), m_platform->textCodec()); });
    }
    m_scripts.starts().setLimits([this](const QString &keyword, const QByteArray &script) {
        return m_grants.limitOf(keyword, script);
    });
    m_ui.connectEngine(m_scripts.state(), m_scripts.starts(), [this] { return m_scripts.vocabulary(); });
    QObject::connect(&m_updates, &StoreUpdates::changed, &m_ui, [this] {
        m_ui.news().showUpdates(static_cast<int>(m_updates.pending().size()));
        m_store.showApps();
    });
    QObject::connect(&m_store, &webbox::failed, &m_ui.news(), &LauncherNews::sayNotInstalled);
    QObject::connect(&m_updates, &StoreUpdates::installed, &m_ui, &LauncherUi::noteUpdated);
    // The store's window may be closed meanwhile.
    QObject::connect(&m_transfers, &StoreTransfers::Progress, &m_transfers,
        [this](float percent) { m_ui.news().showDownload(static_cast<int>(percent)); });
    QObject::connect(&m_transfers, &StoreTransfers::Status, &m_transfers, [this](DownloadStatus status) {
        if (!isOnTheWay(status))
            m_ui.news().showDownload({});
    });
    m_hand.gate().onPause([this](InputPause pause) { m_ui.tellPause(pause); });
    m_platform->onEndRequested([this] { m_ui.endProcess(); });
    m_platform->onInterrupted([this] { m_ui.interrupt(); });
}

bool Program::startLauncher()
{
    // Before the claim can be seen: whoever finds it taken calls its holder.
    m_call = LauncherCall::listen([this](LauncherCall::Kind kind) {
        if (kind == LauncherCall::Kind::Fetch) {
            m_ui.fetch();
            takeName();
        }
        takeRequests();
    });
    if (!m_instance.claim()) {
        if (const std::optional<qint64> first = m_instance.holder())
            LauncherCall::call(*first, LauncherCall::Kind::Fetch);
        return false;
    }
    // Apps are opened by paths relative to the program folder.
    QDir::setCurrent(m_platform->paths().programFolder());
    m_ui.start({.hotkey = m_platform->hotkey(),
        .windows = m_platform->windows(),
        // The name on the bus comes with the tray icon: a start does not wait for either.
        .whenTrayAnswers =
            [this](std::function<void()> then) {
                m_platform->whenTrayAnswers([this, then = std::move(then)] {
                    then();
                    takeName();
                });
            },
        .registersComponents = m_platform->registersComponents(),
        .autostart = m_platform->autostart()});
    takeRequests();
    m_updates.start();
    return true;
}

// Each from the event loop: the box of one must not hold up the next.
void Program::takeRequests()
{
    for (const LauncherRequest &request : m_requests.take())
        QTimer::singleShot(0, &m_ui, [this, request] { carryOut(request); });
}

void Program::carryOut(const LauncherRequest &request)
{
    using Kind = LauncherRequest::Kind;
    switch (request.kind) {
    case Kind::Install:
        m_ui.installPackage(request.object);
        break;
    case Kind::OpenScript:
        m_ui.openScript(request.object, [this, path = request.object] {
            // A run of its own, as from the command line.
            QProcess::startDetached(m_folders.onDisk(m_folders.file(u"plum"_s)), {path});
        });
        break;
    case Kind::Run:
        m_ui.runApp(request.object);
        break;
    case Kind::NewApp:
        m_ui.addApp();
        break;
    case Kind::Store:
        m_store.openStore();
        break;
    case Kind::Stop:
        m_ui.stop();
        break;
    }
}

bool Program::runWished(const QString &keyword)
{
    const std::optional<QString> folder = m_folders.appOnDisk(keyword);
    if (!folder || !QFileInfo(*folder).isDir())
        return false;
    QTimer::singleShot(0, &m_ui, [this, keyword] { m_ui.runApp(keyword); });
    return true;
}

bool Program::installWished(const QString &path)
{
    if (QDir::isRelativePath(path) || !path.endsWith(".wfp"_L1) || !QFileInfo(path).isFile())
        return false;
    QTimer::singleShot(0, &m_ui, [this, path] { m_ui.installPackage(path); });
    return true;
}

// Again with every second start: the bus may have come later than the launcher.
void Program::takeName()
{
    if (!m_name)
        m_name = m_platform->takeLauncherName({.show = [this] { m_ui.fetch(); },
            .run = [this](const QString &keyword) { return runWished(keyword); },
            .install = [this](const QString &path) { return installWished(path); }});
}

void Program::askInstall(InstallOffer offer, std::function<void()> install)
{
    // A package that lies here can be looked into. Of one that comes from elsewhere the index may say it.
    if (offer.sheet.isEmpty() && QFileInfo(offer.origin).isFile())
        offer.sheet = m_grants.sheetOfPackage(offer.origin);
    offer.granted = m_grants.granted(offer.keyword);
    m_questions.ask(offer, [this, offer, install = std::move(install)] {
        m_grants.promise(offer.keyword, offer.sheet);
        install();
    });
}

void Program::keepWhatHappened(const QString &sentence)
{
    if (!m_flight)
        return;
    m_flight->recorder.noteOutcome(sentence);
    writeFlightPage(lastFlightPath(), pageOfLastRun());
}

QString Program::pageOfLastRun() const
{
    return flightPage(m_flight->recorder.log(), m_flight->recorder.film());
}

void Program::showWhatHappened()
{
    writeFlightPage(lastFlightPath(), pageOfLastRun());
    m_platform->shell().open(lastFlightPath(), {}, ShowState::Normal);
}

bool Program::mayRun(const QString &keyword)
{
    if (const std::optional<QString> reason = m_updates.takenBack(keyword)) {
        if (!MessageBoxes::askToRun(keyword, *reason))
            return false;
        m_updates.insist(keyword);
    }
    const auto question = m_grants.questionBefore(keyword);
    if (!question)
        return true;
    m_questions.ask(question->offer, [this, keyword, grant = question->grant] {
        m_grants.allow(keyword, grant);
        m_ui.runApp(keyword);
    });
    return false;
}

void Program::tellSheet(const QString &keyword)
{
    const AppGrants::Told told = m_grants.told(keyword);
    const QString heading = told.isTakenBack
        ? QCoreApplication::translate("plum::MessageBoxes", "%1 does not run: you have taken this back.")
        : told.isLimited
        ? QCoreApplication::translate("plum::MessageBoxes", "%1 may do this and nothing else.")
        : QCoreApplication::translate(
            "plum::MessageBoxes", "%1 is your own: nothing limits it. Its script does this.");
    if (MessageBoxes::tellSheet(
            heading.arg(keyword), told.sentences.join(u'\n'), told.isLimited && !told.isTakenBack))
        m_grants.takeBack(keyword);
}

void Program::runScript(const QString &commandLine)
{
    const RunStart::CommandLineScript script = m_scripts.starts().prepareCommandLine(commandLine);
    if (script.path.isEmpty())
        say(QCoreApplication::translate("plum::Program",
            "\"%1\" is not the path of a script (it does not end in \".wf\"); nothing is run.")
                .arg(commandLine));
    else if (!script.loaded)
        say(QCoreApplication::translate("plum::Program", "cannot read %1; nothing is run.").arg(script.path));
    else if (looksLikeLineFeedsOnly(m_scripts.state().runlist))
        say(QCoreApplication::translate(
            "plum::Program", "%1 has no CR LF line ends and is therefore one single line.")
                .arg(script.path));
    m_ui.runAll();
}

// Ends without unwinding: a script may be anywhere inside nested waits.
void Program::end(int status)
{
    m_installer.putBack();
    m_platform->releaseDesktop();
    std::fflush(nullptr);
    std::_Exit(status);
}

void Program::Door::installUpdates()
{
    m_program.m_updates.installAll();
}

void Program::Door::openCatalogue()
{
    m_program.m_store.openStore();
}

void Program::Door::askInstall(InstallFlag flag, const QString &name)
{
    m_program.m_store.askInstall(flag, name);
}

void Program::Host::showMessage(const Message &message)
{
    m_program.m_ui.showMessage(message);
}

void Program::Host::askName(const QString &name)
{
    m_program.m_ui.askPackageName(name);
}

void Program::Host::askInstall(const InstallOffer &offer, std::function<void()> install)
{
    m_program.askInstall(offer, std::move(install));
}

bool Program::Host::isAsking() const
{
    return m_program.m_questions.isAsking() || m_program.m_ui.isAskingPackageName();
}

void Program::Host::addApp(const QString &keyword)
{
    m_program.m_ui.addInstalledApp(keyword);
}

} // namespace plum
