#pragma once

#include "library/library_bench.h"

#include "engine/editions/script_error.h"
#include "platform/stop_signal.h"
#include "recording/recording_commands.h"
#include "recording/recording_launcher.h"
#include "script_system.h"
#include "ui/asking/message_boxes.h"
#include "ui/controls/file_entry.h"
#include "ui/frm_set.h"
#include "ui/launcher_ui.h"
#include "ui/store_door.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace plum::recording {

// A user in front of the boxes that wait for an answer: writes down what they say and presses a button.
class BoxUser
{
public:
    BoxUser()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(0);
    }

    // Leaves the boxes to somebody else.
    void rest() { m_timer.stop(); }

    QStringList seen; // "text" or "!text" for a system-modal one
    QStringList titles;
    QStringList details; // the smaller text below
    QList<QImage> pictures;
    bool allThemed = true; // all had the program's look and its picture
    QMessageBox::StandardButton answer = QMessageBox::Yes;
    QString caption; // of the button to press in place of that
    bool answers = true;

private:
    void look()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !answers)
            return;
        const bool onTop = box->windowFlags() & Qt::WindowStaysOnTopHint;
        seen += (onTop ? QStringLiteral("!") : QString()) + box->text();
        titles += box->windowTitle();
        details += box->informativeText();
        pictures += box->iconPixmap().toImage();
        allThemed = allThemed && !box->styleSheet().isEmpty() && !box->windowIcon().isNull()
            && !box->iconPixmap().isNull();
        const QList<QAbstractButton *> buttons = box->buttons();
        const auto captioned = std::ranges::find_if(
            buttons, [this](const QAbstractButton *button) { return button->text() == caption; });
        if (captioned != buttons.end())
            (*captioned)->click();
        else if (box->button(answer))
            box->button(answer)->click();
        else
            box->accept();
    }

    QTimer m_timer;
};

class RecordingStore final : public StoreDoor
{
public:
    explicit RecordingStore(Log &log)
        : m_log(log)
    {
    }

    void openCatalogue() override { m_log.add(QStringLiteral("store catalogue")); }
    void askInstall(InstallFlag flag, const QString &name) override
    {
        m_log.add(QStringLiteral("store install %1 %2").arg(name).arg(static_cast<int>(flag)));
    }
    void installUpdates() override { m_log.add(QStringLiteral("store updates")); }

private:
    Log &m_log;
};

// `note.down <text>` writes its text into the log, so that a test sees which lines ran.
class NoteCommands final : public Handler
{
public:
    explicit NoteCommands(Log &log)
        : m_log(log)
    {
    }

    Next call(const CommandCall &call) override
    {
        m_log.add(QStringLiteral("note ") + call.arg(0));
        return Next::GoOn;
    }
    QList<CommandInfo> commands() const override
    {
        return {{u"down", {{{u"text", FieldKind::Text}}}, u"Writes a text down."}};
    }

private:
    Log &m_log;
};

// The real launcher with a real engine on the recording backend and a program folder on the disk.
class LauncherBench
{
public:
    LauncherBench()
    {
        platform.paths().folder = folder.path();
        waiter.records = false;
        QDir::setCurrent(folder.path());
        system.engine().add(QStringLiteral("note"), std::make_unique<NoteCommands>(platform.log));
        ui.connectEngine(state, system.starts(), [this] { return system.vocabulary(); });
    }

    void start()
    {
        startUi();
        EXPECT_TRUE(waitUntil([this] { return ui.window()->isActiveWindow() && hasMenus(); }));
        platform.log.clear(); // a window that is slow to become active is activated once more meanwhile
    }

    // The start alone, with what it does to the platform in the log.
    void startUi()
    {
        ui.start({platform.hotkey(), platform.windows(),
            [this](std::function<void()> then) { platform.whenTrayAnswers(std::move(then)); },
            platform.registersComponents(), platform.autostart()});
    }

    // The menus come with the tray icon, after the window.
    static bool hasMenus()
    {
        return std::ranges::any_of(QApplication::topLevelWidgets(),
            [](const QWidget *widget) { return widget->objectName() == QStringLiteral("cd"); });
    }

    // Lets the user interface live until `condition` holds; false when it never does.
    static bool waitUntil(const std::function<bool()> &condition)
    {
        for (QDeadlineTimer patience(60000); !condition();) {
            if (patience.hasExpired())
                return false;
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        return true;
    }

    // Apps whose scripts note their own name, in this order.
    void addApps(const QStringList &keywords)
    {
        for (const QString &keyword : keywords)
            folder.addApp(keyword, "note.down \"" + keyword.toUtf8() + "\"\r\n");
        writeBytes(folder.configTxt(), configText(keywords).toUtf8());
    }

    template <typename Widget = QWidget> Widget *find(const char *name)
    {
        // A test may look at a panel before the launcher has needed it.
        ui.window()->editPanel();
        ui.window()->renamePanel();
        auto *found = ui.window()->findChild<Widget *>(QLatin1StringView(name));
        if (!found)
            qFatal("no %s in the launcher", name);
        return found;
    }

    // A window of its own: the input box or the hotkey window; null when it is not open.
    static QWidget *topLevel(const char *name)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1StringView(name) && widget->isVisible())
                return widget;
        }
        return nullptr;
    }

    template <typename Widget = QWidget> static Widget *inBox(const char *name)
    {
        QWidget *box = topLevel("shurubox");
        auto *found = box ? box->findChild<Widget *>(QLatin1StringView(name)) : nullptr;
        if (!found)
            qFatal("no %s in the input box", name);
        return found;
    }

    static void key(QWidget *widget, int key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
        QApplication::sendEvent(widget, &release);
    }

    static void type(QWidget *widget, const QString &text)
    {
        for (const QChar c : text)
            key(widget, c.toUpper().unicode(), c);
    }

    static void mouse(
        QWidget *widget, QEvent::Type what, QPoint at, Qt::MouseButton button, Qt::MouseButtons held = {})
    {
        QMouseEvent event(what, at, widget->mapToGlobal(at), button, held, {});
        QApplication::sendEvent(widget, &event);
    }

    static void click(QWidget *widget, Qt::MouseButton button = Qt::LeftButton, QPoint at = {5, 5})
    {
        mouse(widget, QEvent::MouseButtonPress, at, button, button);
        mouse(widget, QEvent::MouseButtonRelease, at, button);
    }

    static void drop(QWidget *widget, const QList<QUrl> &urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &enter);
        QDropEvent dropped(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &dropped);
    }

    QStringList said() const { return platform.log.lines(); }

    ProgramFolder folder;
    RecordingPlatform platform;
    RecordingStore store{platform.log};
    RecordingTrash trash{platform.log};
    AppFolders places{platform.paths()};
    AppListFile listFile{platform.paths(), platform.textCodec()};
    PackageInstaller installer{{platform.paths(), platform.textCodec(), {places, listFile, trash.asTrash()}}};
    BoxUser user;
    bool agreesToInstall = true;
    StopSignal stop;
    bool watchesHand = false;
    int watches = 0; // how often it began
    InputPause pause; // of the run's keys and clicks
    PickRequest pickRequest;
    std::function<void(const PickedText &)> pickAnswer; // once something is to be picked
    LauncherUi ui{{platform.paths(), platform.textCodec(), platform.shell(), store, installer,
        [this](const InstallOffer &offer, const std::function<void()> &install) {
            platform.log.add(
                QStringLiteral("asks to install %1%2")
                    .arg(offer.keyword, offer.replaces ? QStringLiteral(" in place") : QString()));
            if (agreesToInstall)
                install();
        },
        {QStringLiteral("http://site"), QStringLiteral("http://forum")},
        [this](int status) { platform.log.add(QStringLiteral("end process %1").arg(status)); },
        [this](const QString &line) { platform.log.add(QStringLiteral("stderr ") + line); }, true,
        [this](const ScriptError &error) {
            for (const ScriptMistake &mistake : error.mistakes())
                platform.log.add(QStringLiteral("stderr ") + mistake.toText());
        },
        stop,
        [this](bool isWatching) {
            if (std::exchange(watchesHand, isWatching) != isWatching)
                watches += isWatching;
        },
        [this] { platform.log.add(QStringLiteral("release keys")); }, [this] { return pause; },
        [this] { platform.log.add(QStringLiteral("goes on")); }, {}, {},
        [this] { platform.log.add(QStringLiteral("shows what happened")); }, {},
        [this](const PickRequest &request, std::function<void(const PickedText &)> then) {
            pickRequest = request;
            pickAnswer = std::move(then);
        }}};
    RecordingWaiter waiter{platform.log};
    RecordingStorePage storePage{platform.log};
    ScriptSystem system{{.platform = platform,
        .shell = platform.shell(),
        .launcher = ui,
        .storePage = storePage,
        .executableName = QStringLiteral("plum"),
        .stop = &stop,
        .waiter = &waiter}};
    RunState &state = system.state();
};

} // namespace plum::recording
