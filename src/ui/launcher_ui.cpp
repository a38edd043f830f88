#include "ui/launcher_ui.h"

#include "engine/run_start.h"
#include "engine/run_state.h"
#include "engine/run_time_error.h"
#include "engine/text_functions.h"
#include "look/app_icon.h"
#include "platform/desktop_windows.h"
#include "platform/global_hotkey.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "ui/editing/edit_panel.h"
#include "ui/frm_set.h"
#include "ui/hotkey_window.h"
#include "ui/sett.h"
#include "ui/shurubox.h"
#include "ui/store_door.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>

#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto focusPatience = 150ms;
constexpr auto firstKeysTime = 100ms;
constexpr auto paintPatience = 2s;

} // namespace

LauncherUi::LauncherUi(Surroundings surroundings)
    : m(std::move(surroundings))
    , m_listFile(m.platform.paths(), m.platform.textCodec())
    , m_library({m.platform.paths(), m.platform.textCodec(), m.platform.shell(), m_messages, m.unpacker,
          m_lists, m_listFile})
    , m_faces(m_library, m.platform.paths())
    , m_settings(m.platform.paths(), m.platform.textCodec())
{
}

LauncherUi::~LauncherUi()
{
    if (m_hotkeyModule)
        m_hotkeyModule->disconnect(this);
    delete m_box;
    delete m_hotkeyWindow;
}

void LauncherUi::connectEngine(RunState &state, RunStart &starts, ScriptVocabulary vocabulary)
{
    m_state = &state;
    m_starts = &starts;
    m_vocabulary = std::move(vocabulary);
}

void LauncherUi::start()
{
    m_state->runctx[1] = u"bao"_s;
    m_state->runidx[2] = 0;
    m_window = std::make_unique<frmSet>(m_lists, m_faces, m_vocabulary);
    startHotkey(); // first of all that takes time: what is pressed from now on is not lost
    connectWindow();
    m_lists.List.setStringList(m_listFile.load());
    showHint();
    showAndActivate();
    connect(m_window.get(), &frmSet::firstPainted, this,
        [this] { QTimer::singleShot(firstKeysTime, this, &LauncherUi::completeStart); });
    // A window that nobody can see yet is not painted.
    QTimer::singleShot(paintPatience, this, &LauncherUi::completeStart);
}

// What nobody needs in order to press the hotkey and to type comes when the window is there.
void LauncherUi::completeStart()
{
    if (std::exchange(m_isComplete, true))
        return;
    m_caretRest.emplace();
    m_window->setWindowIcon(appIcon());
    m.platform.whenTrayAnswers([this] { menus().addTrayIcon(); });
}

void LauncherUi::startHotkey()
{
    m_hotkeyModule = std::make_unique<sethotkey>(m.platform.hotkey());
    connect(m_hotkeyModule.get(), &sethotkey::fired, this, &LauncherUi::toggle);
    connect(m_hotkeyModule.get(), &sethotkey::registrationChanged, this, &LauncherUi::showHint);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &LauncherUi::noteSeen);
    if (!m_settings.exists())
        return;
    m_hotkeyModule->hotkeyText = m_settings.ReadSetting(u"hotkey"_s, u"hotkey"_s);
    makeHotkeyWindow();
    m_hotkeyWindow->SetNew(hotkey::Register);
}

void LauncherUi::connectWindow()
{
    frmSet *window = m_window.get();
    connect(window, &frmSet::runFromKeywordBox, this, [this](const QString &k) { runKeyword(k, false); });
    connect(window, &frmSet::runFromList, this, [this](const QString &k) { runKeyword(k, true); });
    connect(window, &frmSet::runFromList2, this, [this](const QString &k) { runKeyword(k, false); });
    connect(window, &frmSet::editDotScriptRequested, this, &LauncherUi::editDotScript);
    connect(window, &frmSet::packageDropped, this, &LauncherUi::packageDropped);
    connect(window, &frmSet::fileDroppedOnKeywordBox, this, [this](const QString &path) {
        m_state->droppedPath = m.platform.shell().shortcutTarget(path);
        m_window->setHint(tr("Dropped: %1").arg(m_state->droppedPath.toHtmlEscaped()));
    });
    connect(window, &frmSet::hotkeyRequested, this, &LauncherUi::showHotkeyWindow);
    connect(window, &frmSet::storeRequested, this, [this] { m.store.openCatalogue(); });
    connect(window, &frmSet::exitRequested, this, &LauncherUi::exit);
    connect(window, &frmSet::settingsMenuRequested, this,
        [this](QPoint position) { menus().mmmm.popup(position); });
    connect(window, &frmSet::listMenuRequested, this,
        [this](QPoint position) { menus().list2you.popup(position); });
    connect(window, &frmSet::saveRequested, this, &LauncherUi::saveEdited);
    connect(window, &frmSet::filesDroppedOnEditor, this, [this](const QStringList &paths) {
        for (const QString &path : paths)
            m_window->editPanel().appendScriptLine(m.platform.shell().shortcutTarget(path));
    });
    connect(window, &frmSet::renameConfirmed, this, &LauncherUi::confirmRename);
}

sett &LauncherUi::menus()
{
    if (!m_menus) {
        m_menus = std::make_unique<sett>(m.platform.registersComponents());
        m_menus->setTheme(m_window->theme());
        connect(m_window.get(), &BorderlessWindow::themeChanged, m_menus.get(), &sett::setTheme);
        connect(m_menus.get(), &sett::commandChosen, this, &LauncherUi::choose);
    }
    return *m_menus;
}

void LauncherUi::showAndActivate()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_window->focusKeywordBox();
    // A window that is hidden and shown again within a moment never lost the keyboard for Qt, which therefore
    // does not tell it that it is active again.
    if (QGuiApplication::focusWindow() == m_window->windowHandle() && !QApplication::activeWindow())
        QApplication::setActiveWindow(m_window.get());
    QTimer::singleShot(focusPatience, this, &LauncherUi::insistOnFocus);
}

// A window manager that guards the focus has to be asked by the system's own means. That call waits for its
// answer, so it comes only when the window has been painted and is still not active.
void LauncherUi::insistOnFocus()
{
    noteSeen();
    if (m_window->isVisible() && !QApplication::activeWindow())
        m.platform.windows().activate(static_cast<WindowHandle>(m_window->winId()));
}

// The launcher has been shown once, to somebody who may from now on want it to go.
void LauncherUi::noteSeen()
{
    if (m_window && m_window->isVisible() && !m_seenSince)
        m_seenSince = m.platform.hotkey().now();
}

// Whether a press of that time found the launcher shown: while it starts nobody has seen it, and on another
// virtual desktop nobody sees it.
bool LauncherUi::isOnScreen(quint32 time)
{
    return m_window->isVisible() && m_seenSince && static_cast<qint32>(time - *m_seenSince) > 0
        && m.platform.windows().isOnScreen(static_cast<WindowHandle>(m_window->winId()));
}

void LauncherUi::toggle(quint32 time)
{
    GlobalHotkey &port = m.platform.hotkey();
    const auto window = static_cast<WindowHandle>(m_window->winId());
    if (isOnScreen(time)) {
        m_window->hide();
        port.takeKeysFrom(window);
        return;
    }
    if (m_window->isVisible())
        m.platform.windows().bringHere(window);
    showAndActivate();
    port.giveKeysTo(window);
}

void LauncherUi::showHint()
{
    m_window->setHint(m_hotkeyModule->isRegistered() ? QString()
                                                     : tr("No hotkey yet.")
                + u" <a href='hotkey' style='color:%1'>%2</a>"_s.arg(
                    m_window->theme().accent.name(), tr("Choose one")));
}

void LauncherUi::runKeyword(const QString &keyword, bool remembersPath)
{
    // A list file may hold any text; only a folder of the library is an app.
    if (!AppLibrary::isFolderName(keyword))
        return;
    guarded([&] {
        m_starts->runApp(
            keyword, remembersPath ? RunStart::ScriptPath::Remembered : RunStart::ScriptPath::Kept);
    });
}

void LauncherUi::runAll()
{
    guarded([this] { m_starts->runAll(); });
}

void LauncherUi::guarded(const std::function<void()> &run)
{
    try {
        run();
    } catch (const RunTimeError &error) {
        fail(error);
    }
}

// A script start carries on after an error; in the launcher an error of a script is fatal.
void LauncherUi::fail(const RunTimeError &error)
{
    const QString head = u"Run-time error '%1':"_s.arg(error.number());
    if (m_state->runidx[2] == 1) {
        m.report(u"%1:%2: run-time error %3: %4"_s.arg(m_state->runctx[0])
                     .arg(error.line().value_or(0) + 1)
                     .arg(error.number())
                     .arg(error.description()));
        return;
    }
    m.report(head + u' ' + error.description());
    showMessage(
        {.text = head + u"\n\n"_s + error.description(), .icon = MessageIcon::Critical, .systemModal = true});
    leaveDesktop();
    m.endProcess(EXIT_FAILURE);
}

void LauncherUi::leaveDesktop()
{
    if (m_menus)
        m_menus->removeTrayIcon();
    if (m_hotkeyModule)
        m_hotkeyModule->UnregisterLauncherHotkey();
}

void LauncherUi::exit()
{
    leaveDesktop();
    if (m_window)
        m_window->hide();
    m.endProcess(EXIT_SUCCESS);
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
    return m_box ? m_box->entryText() : QString();
}

shurubox &LauncherUi::freshBox()
{
    if (m_box)
        m_box->close();
    QWidget *owner = m_window && m_window->isVisible() ? m_window.get() : nullptr;
    m_box = new shurubox(m.platform.shell(),
        {.exists = [this](const QString &keyword) { return m_library.exists(keyword); },
            .isUsableName = [](const QString &keyword) { return AppLibrary::isFolderName(keyword); }},
        owner);
    connect(m_box, &shurubox::unloaded, this, [this] { m_box.clear(); });
    connect(m_box, &shurubox::inputConfirmed, this, &LauncherUi::confirmInput);
    connect(m_box, &shurubox::inputClosed, this, &LauncherUi::closeInput);
    connect(m_box, &shurubox::nameConfirmed, this, [this](const QString &name) { confirmName(name, true); });
    connect(m_box, &shurubox::nameConfirmedUnchecked, this,
        [this](const QString &name) { confirmName(name, false); });
    return *m_box;
}

// What a script shows without a display would otherwise wait in silence for ever.
void LauncherUi::reportUnseen(const QString &what, const QString &text)
{
    if (!m.hasDesktop)
        m.report(u"%1 %2: %3"_s.arg(m_state->runctx[0], what, text.simplified()));
}

void LauncherUi::showInput(const QString &prompt, const QString &variable)
{
    reportUnseen(u"asks, and nobody can answer without a display"_s, prompt);
    freshBox().showInput(prompt, variable);
}

void LauncherUi::showTip(const QString &text)
{
    reportUnseen(u"shows a tip, and nobody can close it without a display"_s, text);
    freshBox().showTip(text);
}

void LauncherUi::confirmInput(const QString &variable, const QString &text)
{
    m_state->vardict.SetVar(variable, text);
    const bool isOver = m_state->runidx[0] >= m_state->runlist.size();
    guarded([this] { m_starts->resume(); });
    // A script on the command line ends after its last line, also when that line was the question.
    if (isOver && m_state->endsWithRun())
        endProcess();
}

void LauncherUi::closeInput()
{
    if (m_state->endsWithRun()) {
        m.endProcess(EXIT_SUCCESS);
        return;
    }
    resumeNext([this] { m_starts->resume(); });
}

void LauncherUi::askPackageName(const QString &name)
{
    freshBox().showName(name, name);
}

void LauncherUi::packageDropped(const QString &path)
{
    const AppLibrary::Dropped outcome = m_library.DropPackage(path);
    m_faces.forget();
    if (outcome != AppLibrary::Dropped::NeedsName)
        return;
    m_installMode = 1;
    freshBox().showName(Piece(m_library.pendingInstall(), u"|"_s, 1), path);
}

void LauncherUi::confirmName(const QString &name, bool checked)
{
    if (m_installMode == 0) {
        m.store.install(name, checked ? StoreDoor::ByName : StoreDoor::Reinstall);
        return;
    }
    if (checked)
        m_library.setPendingInstall(Piece(m_library.pendingInstall(), u"|"_s, 0) + u'|' + name);
    m_library.InstallPackage(m_library.pendingInstall());
    m_faces.forget();
}

void LauncherUi::showMessage(const Message &message)
{
    reportUnseen(u"says"_s, message.text);
    if (m.hasDesktop)
        m_messages.showMessage(message);
}

void LauncherUi::hideLauncher()
{
    if (m_window)
        m_window->hide();
}

void LauncherUi::endProcess()
{
    leaveDesktop();
    m.endProcess(EXIT_SUCCESS);
}

} // namespace plum
