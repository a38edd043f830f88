// Paints every window and panel into PNG files: pictures <folder> [light|dark] [en|zh]; QT_SCALE_FACTOR is
// the scale. The documents' pictures are made with it, and people look at them.

#include "ui/launcher_bench.h"

#include "engine/launcher.h"
#include "engine/run_time_error.h"
#include "helpers/download/download_window.h"
#include "helpers/store_window/plain_store_form.h"
#include "library/fixed_texts.h"
#include "library/install_offer.h"
#include "look/translations.h"
#include "picker/picker.h"
#include "store/download_texts.h"
#include "ui/asking/install_dialog.h"
#include "ui/controls/footer.h"
#include "ui/controls/passing_note.h"
#include "ui/editing/script_editor.h"
#include "ui/lists/keyword_list.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

namespace {

using namespace plum;
using namespace plum::recording;
using namespace Qt::StringLiterals;

void useDarkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x2b2b2b));
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, QColor(0x1e1e1e));
    palette.setColor(QPalette::AlternateBase, QColor(0x2b2b2b));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Button, QColor(0x3a3a3a));
    palette.setColor(QPalette::ButtonText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0xd78fc4));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x808080));
    QApplication::setPalette(palette);
}

// What the user of the pictures has written; an app in another language says the same in it.
struct OwnTexts
{
    QString date, mail, notes, shot, script, question, name, tip;
};

const OwnTexts english{u"Types today's date where the caret is"_s, u"mail NAME writes a greeting to NAME"_s,
    u"Keeps a line of text in notes.txt"_s, u"Finds a colour on the screen"_s,
    u"note.down \"hello, world\"\r\n// asks, and greets by name\r\ninput.text \"who\",\"Your name?\"\r\n"
    "set.greeting \"Dear\"\r\nnote.down Hello +?+, you are +?+!+(set.who+set.greeting)\r\n"
    "note.unknown os.path_desktop\r\n"_s,
    u"Your name?"_s, u"Ann"_s, u"Dear Ann,\nthe report is ready.\n亲爱的安，报告已经准备好了。"_s};

const OwnTexts chinese{u"在光标处输入今天的日期"_s, u"mail 姓名 给此人写一句问候"_s,
    u"把一行文字记到 notes.txt"_s, u"在屏幕上寻找一种颜色"_s,
    u"note.down \"你好，世界\"\r\n// 询问姓名，并问候此人\r\ninput.text \"who\",\"您叫什么名字？\"\r\n"
    "set.greeting \"亲爱的\"\r\nnote.down 你好，+?++?+！+(set.greeting+set.who)\r\n"
    "note.unknown os.path_desktop\r\n"_s,
    u"您叫什么名字？"_s, u"安"_s, u"亲爱的安，\n报告已经准备好了。"_s};

class Painter : public LauncherBench
{
public:
    Painter(QString folderName, QString suffix, const OwnTexts &texts)
        : m_target(std::move(folderName))
        , m_suffix(std::move(suffix))
        , m_texts(texts)
    {
    }

    void paintAll()
    {
        const std::pair<QString, QByteArray> apps[]{
            {u"date"_s, guide(m_texts.date)},
            {u"mail"_s, guide(m_texts.mail)},
            {u"notes"_s, guide(m_texts.notes)},
            {u"piano"_s, ""},
            {u"shot"_s, guide(m_texts.shot)},
            {u"weather"_s, "//guide:https://example.org/weather\r\n"},
            {u"你好"_s, "//guide:打开网页\r\n"},
        };
        for (const auto &[keyword, guide] : apps)
            folder.addApp(keyword, guide + m_texts.script.toUtf8());
        QImage icon(64, 64, QImage::Format_ARGB32);
        icon.fill(Qt::transparent);
        QPainter painter(&icon);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor(0x2d7dd2));
        painter.drawEllipse(4, 4, 56, 56);
        painter.setBrush(QColor(0xf3d34a));
        painter.drawPie(4, 4, 56, 56, 0, 90 * 16);
        painter.end();
        icon.save(folder.apps(u"shot/icon.png"_s));
        start();

        save("launcher", ui.window());
        saveFooter();
        type(find("Text8"), u"a"_s);
        key(find("Text8"), Qt::Key_Down);
        key(find("List2"), Qt::Key_Down);
        save("launcher-results", ui.window());
        save("menu-list", menu("list2you"));
        save("menu-settings", menu("mmmm"));
        save("menu-tray", menu("cd"));

        rightClickFirst();
        choose("editok");
        waitUntil([&] { return find<ScriptEditor>("Text4")->findingCount(Severity::Error) > 0; });
        find<ScriptEditor>("Text4")->goToFinding(true);
        save("editor", ui.window());
        saveHeld();
        click(find("Image9"));
        choose("editname");
        save("rename", ui.window());
        click(find("Image11"));

        click(find("menuimg"));
        QWidget *hotkeyWindow = topLevel("hotkey");
        hotkeyWindow->findChild<QAbstractButton *>(u"optKey0"_s)->click();
        hotkeyWindow->findChild<QComboBox *>(u"cboLetter"_s)->setCurrentIndex(25);
        save("hotkey", hotkeyWindow);
        hotkeyWindow->hide();

        ui.showInput(m_texts.question, u"who"_s);
        type(inBox("Text1"), m_texts.name);
        save("input", topLevel("shurubox"));
        ui.showTip(m_texts.tip);
        save("tip", topLevel("shurubox"));
        topLevel("shurubox")->close();
        QApplication::processEvents();
        ui.askPackageName(u"date"_s);
        click(inBox("Image2"));
        save("name", topLevel("shurubox"));
        click(inBox("Label4"));
        save("name-details", topLevel("shurubox"));
        topLevel("shurubox")->close();
        saveDialogs();
        saveStore();
        savePicker();
    }

private:
    // What the line under the lists says.
    void saveFooter()
    {
        type(find("Text8"), u"zoo"_s);
        save("launcher-nothing", ui.window());
        find<QLineEdit>("Text8")->clear();
        ui.window()->footer().setRunning(
            QCoreApplication::translate("plum::RunDisplay", "%1 runs, line %2").arg(u"mail"_s).arg(4));
        save("launcher-running", ui.window());
        ui.window()->footer().setRunning({});
    }

    // The editor while it holds a run.
    void saveHeld()
    {
        folder.addApp(u"piano"_s,
            guide(m_texts.mail) + "set.who \"" + m_texts.name.toUtf8() + "\"\r\nset.count \"2\"\r\n"
                + "while.start \"count\",set.count\r\nnote.down set.who\r\nwhile.end \r\n");
        Q_EMIT ui.window()->editRequested(u"piano"_s);
        find<ScriptEditor>("Text4")->setBreakpoints({4});
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            if (!find("goOn")->isEnabled())
                return;
            look.stop();
            save("editor-held", ui.window());
            find<QAbstractButton>("stopRun")->click();
        });
        look.start(0);
        find<QAbstractButton>("run")->click();
        rightClickFirst();
        choose("editok");
    }

    // The card beside the mark that chooses from the screen.
    void savePicker()
    {
        platform.screen().size = {64, 64};
        for (int i = 0; i < 64 * 64; ++i)
            platform.screen().pixels.push_back((i / 64 + i % 64) / 16 % 2 ? 0x2d7dd2 : 0xf3d34a);
        Picker picker(DesktopView::take(platform.screen(), platform.windows()).value(), {});
        picker.start({30, 20});
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *card = widget->findChild<QWidget *>(u"pickCard"_s); card && widget->isVisible())
                save("picker", card);
        }
    }

    // The store's window with what stands around its page, and the helper that downloads for scripts.
    void saveStore()
    {
        PlainStoreForm form(QUrl(u"https://store.example/plum/download/"_s));
        form.setApps({QJsonObject{{u"keyword"_s, u"mail"_s}, {u"version"_s, u"1.0"_s}},
            QJsonObject{{u"keyword"_s, u"shot"_s}, {u"version"_s, u"1.0"_s}, {u"newest"_s, u"1.2"_s}}});
        form.bringUp();
        const QString title = downloadTitle(DownloadStatus::Receiving).toString();
        form.setCaption(title, meaningOf(title));
        form.setProgress({{u"percent"_s, 40}, {u"total"_s, u"1.25 MB"_s}, {u"done"_s, u"512 KB"_s},
            {u"speed"_s, u"230 KB"_s}});
        save("store-download", &form);
        form.setCaption({});
        form.setFailed(u"chess"_s);
        save("store-failed", &form);
        save("menu-installed", form.findChild<QPushButton *>(u"installed"_s)->menu());
        form.hide();
        const DownloadRequest request{.url = u"https://files.example/report.zip"_s,
            .target = u"\\report.zip"_s,
            .label = u"report.zip"_s,
            .name = u"..\\report.zip"_s}; // which is refused: nothing is fetched for a picture
        DownloadWindow download(request, platform.paths());
        download.show();
        download.start();
        save("download", &download);
    }

    void saveDialogs()
    {
        PassingNote::tell(QCoreApplication::translate("plum::LauncherNews",
            "Plum is hidden. Start it again to bring it back, and choose a hotkey there."));
        save("note", topLevel("passingnote"));
        ui.window()->showKeys();
        save("keys", topLevel("keysheet"));
        ui.window()->showManual();
        save("manual", topLevel("manual"));
        InstallDialog dialog({.keyword = u"chess"_s, .origin = u"https://store.example/chess.wfp"_s});
        dialog.setAttribute(Qt::WA_DeleteOnClose, false);
        dialog.bringUp();
        save("install", &dialog);
        dialog.hide();
        InstallDialog known({.keyword = u"chess"_s,
            .origin = u"https://store.example/chess.wfp"_s,
            .version = u"1.2"_s,
            .size = 48'000,
            .sheet = R"({"see":["screen"],"read":["apps:chess/pieces.png"],"write":["apps:chess/games.txt"],)"
                     R"("network":["chess.example"],"input":["keys","mouse"],"window":"Chess"})"});
        known.setAttribute(Qt::WA_DeleteOnClose, false);
        known.bringUp();
        save("install-known", &known);
        known.hide();
        user.rest();
        saveBox("message", [] {
            MessageBoxes().showMessage(
                {.text = u"Successfully"_s, .meaning = meaningOfFixed(u"Successfully")});
        });
        saveBox("error", [] {
            const RunTimeError error(RunTimeError::TypeMismatch, ErrorCause::NotMilliseconds, u"abc"_s);
            MessageBoxes().showMessage({.text = u"Run-time error '13':\n\n"_s + error.description()
                    + u"\n\n"_s
                    + QCoreApplication::translate("plum::ScriptRuns", "%1, line %2:").arg(u"count"_s).arg(3)
                    + u"\ntime.sleep \"abc\""_s,
                .icon = MessageIcon::Critical});
        });
        saveBox("delete", [] { MessageBoxes().askToDelete(u"确定删除?"_s, u"提示"_s, u"mail"_s); });
        saveBox("run-or-edit", [] { MessageBoxes::askRunOrEdit(u"/home/ann/Downloads/tidy.wf"_s); });
        saveBox("taken-back", [] { MessageBoxes::askToRun(u"chess"_s, {}); });
        saveBox("unsaved", [] {
            MessageBoxes::askUnsaved(
                QCoreApplication::translate("plum::AppActions", "%1 is not saved.").arg(u"\"mail\""_s));
        });
    }

    // `show` waits until the box is closed.
    void saveBox(const char *name, const std::function<void()> &show)
    {
        QTimer::singleShot(100, [this, name] {
            QWidget *box = QApplication::activeModalWidget();
            save(name, box);
            box->close();
        });
        show();
    }

    static QMenu *menu(const char *name)
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1StringView(name))
                return qobject_cast<QMenu *>(widget);
        }
        return nullptr;
    }

    void choose(const char *item)
    {
        menu("list2you")->findChild<QAction *>(QLatin1StringView(item))->trigger();
    }

    void rightClickFirst()
    {
        QApplication::processEvents();
        click(find<KeywordList>("List2")->viewport(), Qt::RightButton, {30, 20});
        menu("list2you")->hide();
    }

    void save(const char *name, QWidget *widget)
    {
        widget->ensurePolished();
        QApplication::processEvents();
        const QString path = u"%1/%2%3.png"_s.arg(m_target, QLatin1StringView(name), m_suffix);
        if (!widget->grab().save(path))
            qFatal("cannot write %s", qUtf8Printable(path));
    }

    static QByteArray guide(const QString &text) { return "//guide:" + text.toUtf8() + "\r\n"; }

    QString m_target;
    QString m_suffix;
    const OwnTexts &m_texts;
};

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QString suffix;
    if (arguments.contains(u"dark"_s)) {
        useDarkPalette();
        suffix = u"-dark"_s;
    }
    const bool isChinese = arguments.contains(u"zh"_s);
    if (isChinese) {
        plum::installTranslation(application, QLocale(QLocale::Chinese, QLocale::China));
        suffix += u"-zh"_s;
    }
    Painter(QDir::current().absoluteFilePath(arguments.value(1)), suffix, isChinese ? chinese : english)
        .paintAll();
    return 0;
}
