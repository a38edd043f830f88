#include "ui/launcher_ui.h"

#include "library/launcher_options.h"
#include "library/package_installer.h"

#include "engine/run_state.h"
#include "look/app_icon.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "platform/stop_signal.h"
#include "ui/controls/footer.h"
#include "ui/frm_set.h"
#include "ui/sett.h"
#include "ui/store_door.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <utility>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto firstKeysTime = 100ms;
constexpr auto paintPatience = 2s;

} // namespace

LauncherUi::LauncherUi(Needs needs)
    : m(std::move(needs))
    , m_listFile(m.paths, m.codec)
    , m_library({m.paths, m.codec, m.shell, m_messages, m.installer, m_lists, m_listFile})
    , m_faces(m_library, m.paths)
    , m_settings(m.paths, m.codec)
    , m_news(m.report)
    , m_runs({.report = m.report,
          .reportMistakes = m.reportMistakes,
          .showMessage = [this](const Message &message) { tellFailure(message); },
          .endProcess = [this](int status) { end(status); },
          .refused =
              [this] {
                  noteShown();
                  m_news.sayNotStarted();
              },
          .began =
              [this] {
                  m.watchHand(true);
                  if (m_runDisplay)
                      m_runDisplay->began();
              },
          .left = [this] { runLeft(); },
          .stop = m.stop,
          .releaseKeys = m.releaseKeys,
          .wentWrong =
              [this](const QString &sentence) {
                  if (m.keepWhatHappened)
                      m.keepWhatHappened(sentence);
              },
          .stopped = [this](const RunStopped::Place &where) { tellStopped(where); }})
    , m_questions(m.shell, m_library,
          {.owner = [this]() -> QWidget * {
               return m_window && m_window->isVisible() ? m_window.get() : nullptr;
           },
              .keysOfTip = [this] { return keysOfTip(); }})
    , m_packageNames({m_library, m_faces, m.store, m_questions, m.askInstall})
{
    connect(&m_questions, &Questions::inputConfirmed, this,
        [this](const QString &variable, const QString &text) { m_runs.resumeWith(variable, text); });
    connect(&m_questions, &Questions::inputClosed, this, [this] { m_runs.resumeClosed(); });
    connect(&m_questions, &Questions::dismissed, this,
        [this](bool withEnter, const QString &variable, const QString &text) {
            m_runs.resumeDismissed(withEnter, variable, text);
        });
    connect(&m.stop, &StopSignal::raised, this, &LauncherUi::carryOutStop);
    connect(&m_questions, &Questions::nameConfirmed, this,
        [this](const QString &name, bool isFree) { m_packageNames.install(name, isFree); });
}

LauncherUi::~LauncherUi() = default;

void LauncherUi::connectEngine(
    RunState &state, RunStart &starts, std::function<ScriptVocabulary()> vocabulary)
{
    m_runs.connectEngine(state, starts);
    m_makeVocabulary = std::move(vocabulary);
}

void LauncherUi::start(const Desktop &desktop)
{
    m_whenTrayAnswers = desktop.whenTrayAnswers;
    m_runs.state().runctx[1] = u"bao"_s;
    m_runs.state().runidx[2] = 0;
    m_window = std::make_unique<frmSet>(m_lists, m_faces, m_vocabulary);
    m_summons = std::make_unique<LauncherSummons>(
        LauncherSummons::Needs{*m_window, desktop.hotkey, desktop.windows, m_settings});
    m_summons->startHotkey(); // first of all that takes time: what is pressed from now on is not lost
    m_vocabulary = m_makeVocabulary();
    m_actions = std::make_unique<AppActions>(AppActions::Needs{*m_window, m_library, m_faces, m.shell,
        m_messages, [this](const QString &path) { m_runs.state().runctx[0] = path; },
        [this](const QString &keyword) { run(keyword, true); },
        [this](const PickRequest &request, std::function<void(const PickedText &)> then) {
            m_screenPick->begin(request, std::move(then));
        },
        [this](const QString &keyword, FollowFrom from) {
            stepping().follow(keyword, from, [&] { run(keyword, true); });
        }});
    m_screenPick = std::make_unique<ScreenPick>(*m_window, *m_summons, m.pick);
    m_menus = std::make_unique<LauncherMenus>(LauncherMenus::Needs{*m_window, *m_actions, *m_summons,
        m_library, m.shell, m.sites, desktop.registersComponents, desktop.autostart, m.tellSheet});
    m_runDisplay = std::make_unique<RunDisplay>(
        RunDisplay::Needs{*m_window, m_runs.state(), [this] { return m_menus->madeMenus(); }, m.inputPause,
            [this] { return m_stepping ? m_stepping->heldLine() : std::nullopt; }});
    m_news.useWindow(*m_window, [this] { return madeMenus(); });
    connectWindow();
    LibraryChange::recover(m.installer.changeNeeds());
    m_lists.order = readLauncherOptions(m.paths, m.codec).order;
    m_lists.List.setStringList(m_listFile.load());
    m_summons->showHint();
    m_summons->showAndActivate();
    connect(m_window.get(), &frmSet::firstPainted, this,
        [this] { QTimer::singleShot(firstKeysTime, this, &LauncherUi::completeStart); });
    // A window that nobody can see yet is not painted.
    QTimer::singleShot(paintPatience, this, &LauncherUi::completeStart);
}

RunStepping &LauncherUi::stepping()
{
    if (!m_stepping) {
        m_stepping = std::make_unique<RunStepping>(
            RunStepping::Needs{m_window->editPanel(), m_runs.state(), m.stop, m_vocabulary,
                [this] { return m_runs.isRunning(); }, [this] { return m_questions.isAskingOfScript(); },
                [this] { requestStop(); }, [this] { return m_summons->comeForward(); },
                [this](WindowHandle window) { m_summons->giveWay(window); }});
    }
    return *m_stepping;
}

// What nobody needs in order to press the hotkey and to type comes when the window is there.
void LauncherUi::completeStart()
{
    if (std::exchange(m_isComplete, true))
        return;
    m_caretRest.emplace();
    m_window->setWindowIcon(appIcon());
    m_whenTrayAnswers([this] { m_menus->menus().addTrayIcon(); });
}

void LauncherUi::connectWindow()
{
    frmSet *window = m_window.get();
    connect(
        window, &frmSet::runFromKeywordBox, this, [this](const QString &keyword) { run(keyword, false); });
    connect(window, &frmSet::runFromList, this, [this](const QString &keyword) { run(keyword, true); });
    connect(window, &frmSet::runFromList2, this, [this](const QString &keyword) { run(keyword, false); });
    connect(window, &frmSet::packageDropped, this,
        [this](const QString &path) { m_packageNames.packageDropped(path); });
    connect(window, &frmSet::fileDroppedOnKeywordBox, this, [this](const QString &path) {
        m_runs.state().droppedPath = m.shell.shortcutTarget(path);
        m_window->footer().setStanding(tr("Dropped: %1").arg(m_runs.state().droppedPath.toHtmlEscaped()));
    });
    connect(window, &frmSet::hotkeyRequested, m_summons.get(), &LauncherSummons::showHotkeyWindow);
    // The launcher may have been fetched from behind a tip or a question, which is the step before.
    connect(window, &frmSet::hideRequested, this, [this] {
        if (m_questions.isAsking())
            m_questions.bringForward();
        else if (canReturn())
            hideLauncher();
    });
    connect(window, &frmSet::stopRequested, this, &LauncherUi::requestStop);
    connect(window, &frmSet::goOnRequested, this, [this] {
        if (m.goOn)
            m.goOn();
    });
    connect(window, &frmSet::stoppedLineRequested, this,
        [this] { m_actions->editAtLine(m_lastStopped.keyword, m_lastStopped.line); });
    connect(window, &frmSet::storeRequested, this, [this] { m.store.openCatalogue(); });
    connect(window, &frmSet::exitRequested, this, &LauncherUi::exit);
    connect(window, &frmSet::updatesRequested, this, [this] { m.store.installUpdates(); });
    connect(m_menus.get(), &LauncherMenus::hideRequested, this, &LauncherUi::hideLauncher);
    connect(m_menus.get(), &LauncherMenus::stopRequested, this, &LauncherUi::requestStop);
    const auto showWhatHappened = [this] {
        if (m.showWhatHappened)
            m.showWhatHappened();
    };
    connect(window, &frmSet::whatHappenedRequested, this, showWhatHappened);
    connect(m_menus.get(), &LauncherMenus::whatHappenedRequested, this, showWhatHappened);
    connect(m_menus.get(), &LauncherMenus::exitRequested, this, &LauncherUi::exit);
    connect(m_menus.get(), &LauncherMenus::endRequested, this, &LauncherUi::endProcess);
}

void LauncherUi::run(const QString &keyword, bool remembersPath)
{
    if (m.mayRun && !m.mayRun(keyword))
        return;
    // Saved before the run, which may last or end the process.
    if (m_lists.noteRun(keyword))
        m_listFile.ConfigSave(m_lists.List.stringList());
    m_runs.runKeyword(keyword, remembersPath);
}

void LauncherUi::noteUpdated(int apps)
{
    m_faces.forget();
    m_news.sayUpdated(apps);
}

void LauncherUi::tellPause(InputPause pause)
{
    m_news.sayPause(m_runs.state().runctx[0], pause);
}

sett *LauncherUi::madeMenus() const
{
    return m_menus ? m_menus->madeMenus() : nullptr;
}

void LauncherUi::leaveDesktop()
{
    if (sett *menus = madeMenus())
        menus->removeTrayIcon();
    if (m_summons)
        m_summons->unregisterHotkey();
}

void LauncherUi::end(int status)
{
    m_isEnding = true;
    leaveDesktop();
    m.endProcess(status);
}

void LauncherUi::exit()
{
    if (m_actions && !m_actions->mayLeaveEditor())
        return;
    leaveDesktop();
    if (m_window)
        m_window->hide();
    m.endProcess(EXIT_SUCCESS);
}

void LauncherUi::endProcess()
{
    end(EXIT_SUCCESS);
}

void LauncherUi::addInstalledApp(const QString &keyword)
{
    m_faces.forget();
    // A script start shows no list and has read none: saving its empty one would lose the user's order.
    if (!m_window)
        m_lists.List.setStringList(m_listFile.load());
    m_lists.addToBoth(keyword);
    m_listFile.ConfigSave(m_lists.List.stringList());
}

QString LauncherUi::keywordBoxText() const
{
    return m_window ? m_window->keywordBoxText() : QString();
}

QString LauncherUi::inputEntryText() const
{
    return m_questions.entryText();
}

// What a script shows without a display would otherwise wait in silence for ever.
void LauncherUi::reportUnseen(const QString &what, const QString &text)
{
    if (!m.hasDesktop)
        m.report(u"%1 %2: %3"_s.arg(m_runs.state().runctx[0], what, text.simplified()));
}

void LauncherUi::showInput(const QString &prompt, const QString &variable)
{
    noteShown();
    reportUnseen(tr("asks, and nobody can answer without a display"), prompt);
    m_runs.noteAsking();
    m_questions.showInput(prompt, variable);
}

void LauncherUi::showTip(const QString &text)
{
    noteShown();
    reportUnseen(tr("shows a tip, and nobody can close it without a display"), text);
    m_runs.noteAsking();
    m_questions.showTip(text);
}

void LauncherUi::noteShown()
{
    if (m_runDisplay)
        m_runDisplay->hasShown();
}

QString LauncherUi::keysOfTip() const
{
    if (!m_runs.hasLinesLeft())
        return {};
    return m_runs.state().endsWithRun() ? tr("✕ ends the script · Enter or Esc only closes this")
                                        : tr("✕ goes on with the script · Enter or Esc gives the rest up");
}

// No line of a script is carried out at the moment, and none will be unless somebody answers.
void LauncherUi::runLeft()
{
    if (m_isEnding)
        return;
    if (!m_questions.isAskingOfScript()) {
        m.watchHand(false);
        if (m_stepping)
            m_stepping->runsAreOver();
    }
    if (m_runDisplay)
        m_runDisplay->ended(m_questions.isAsking());
    const bool isScriptStart = m_runs.state().runidx[2] == 1;
    if (isScriptStart && !(m_questions.isAsking() && m.hasDesktop)) {
        m.report(tr("nothing is left to run, and the process stays; Ctrl+C or \"kill %1\" ends it.")
                     .arg(QCoreApplication::applicationPid()));
    }
    if (std::exchange(m_tellsHowToReturn, false))
        m_news.sayHowToReturn();
}

void LauncherUi::requestStop()
{
    if (m_runs.isRunning() || m_questions.isAskingOfScript())
        m.stop.raise();
}

void LauncherUi::interrupt()
{
    const bool isStop
        = m_runs.state().runidx[2] == 1 && (m_runs.isRunning() || m_questions.isAskingOfScript());
    end(isStop ? ScriptRuns::stoppedStatus : EXIT_SUCCESS);
}

// What waits for the user of itself lets go; what is being carried out leaves where it looks at the signal.
void LauncherUi::carryOutStop()
{
    if (m_runs.state().runidx[2] == 1) {
        end(ScriptRuns::stoppedStatus);
        return;
    }
    const bool waits = m_questions.isAskingOfScript();
    m_questions.dropOfScript();
    m_messages.dismissMessages();
    if (m_runs.isRunning())
        return;
    if (waits)
        m_runs.stopWaiting();
    else
        m.stop.lower(); // the run was over before
}

void LauncherUi::tellFailure(const Message &message)
{
    showMessage(message);
    if (m.showWhatHappened)
        m_news.sayFailed();
}

void LauncherUi::tellStopped(const RunStopped::Place &where)
{
    m_lastStopped = where;
    noteShown();
    m_news.sayStopped(where);
}

// Whether the user has a way to fetch the launcher without starting it again.
bool LauncherUi::canReturn() const
{
    return m_summons->hasHotkey() || (madeMenus() && madeMenus()->hasTrayIcon());
}

void LauncherUi::showMessage(const Message &message)
{
    noteShown();
    reportUnseen(tr("says"), message.text);
    if (m.hasDesktop)
        m_messages.showMessage(message);
}

void LauncherUi::hideLauncher()
{
    if (!m_window)
        return;
    noteShown();
    m_window->hide();
    // A script that hides the launcher goes on with what lies behind it: nothing gets in its way.
    m_tellsHowToReturn = !canReturn();
    if (m_tellsHowToReturn && !m_runs.isRunning())
        runLeft();
}

void LauncherUi::openScript(const QString &systemPath, const std::function<void()> &run)
{
    switch (MessageBoxes::askRunOrEdit(systemPath)) {
    case MessageBoxes::ScriptAnswer::Run:
        run();
        break;
    case MessageBoxes::ScriptAnswer::Edit:
        m_actions->editFile(systemPath);
        break;
    case MessageBoxes::ScriptAnswer::Neither:
        break;
    }
}

void LauncherUi::addApp()
{
    fetch();
    m_actions->addApp();
}

void LauncherUi::fetch()
{
    if (m_summons)
        m_summons->fetch();
}

} // namespace plum
