// Paints every window and panel into PNG files: pictures <folder> [light|dark] [scale is QT_SCALE_FACTOR's].
// The documents' pictures are made with it, and people look at them.

#include "ui/launcher_bench.h"

#include "engine/launcher.h"
#include "library/install_offer.h"
#include "look/translations.h"
#include "ui/install_dialog.h"
#include "ui/lists/keyword_list.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPainter>
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

class Painter : public LauncherBench
{
public:
    Painter(QString folderName, QString suffix)
        : m_target(std::move(folderName))
        , m_suffix(std::move(suffix))
    {
    }

    void paintAll()
    {
        const std::pair<QString, QByteArray> apps[]{
            {u"date"_s, "//guide:Types today's date where the caret is\r\n"},
            {u"mail"_s, "//guide:mail NAME writes a greeting to NAME\r\n"},
            {u"notes"_s, "//guide:Keeps a line of text in notes.txt\r\n"},
            {u"piano"_s, ""},
            {u"shot"_s, "//guide:Finds a colour on the screen\r\n"},
            {u"weather"_s, "//guide:https://example.org/weather\r\n"},
            {u"你好"_s, "//guide:打开网页\r\n"},
        };
        for (const auto &[keyword, guide] : apps)
            folder.addApp(keyword, guide + script);
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
        type(find("Text8"), u"a"_s);
        key(find("Text8"), Qt::Key_Down);
        key(find("List2"), Qt::Key_Down);
        save("launcher-results", ui.window());
        save("menu-list", menu("list2you"));
        save("menu-settings", menu("mmmm"));
        save("menu-tray", menu("cd"));

        rightClickFirst();
        choose("editok");
        save("editor", ui.window());
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

        ui.showInput(u"Your name?"_s, u"who"_s);
        type(inBox("Text1"), u"Ann"_s);
        save("input", topLevel("shurubox"));
        ui.showTip(u"Dear Ann,\nthe report is ready.\n亲爱的安，报告已经准备好了。"_s);
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
    }

private:
    void saveDialogs()
    {
        ui.window()->showKeys();
        save("keys", topLevel("keysheet"));
        ui.window()->showManual();
        save("manual", topLevel("manual"));
        InstallDialog dialog({.keyword = u"chess"_s, .origin = u"https://store.example/chess.wfp"_s});
        dialog.setAttribute(Qt::WA_DeleteOnClose, false);
        dialog.bringUp();
        save("install", &dialog);
        dialog.hide();
        user.rest();
        saveBox("message", [] { MessageBoxes().showMessage({.text = u"Successfully"_s}); });
        saveBox("error", [] {
            MessageBoxes().showMessage({.text = u"Run-time error '13':\n\nType mismatch: \"abc\" is not a "
                                                "number of milliseconds"_s,
                .icon = MessageIcon::Critical});
        });
        saveBox("delete", [] { MessageBoxes().askToDelete(u"确定删除?"_s, u"提示"_s, u"mail"_s); });
        saveBox("unsaved", [] { MessageBoxes::askUnsaved(u"\"mail\" is not saved."_s); });
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

    const QByteArray script = "note.down \"hello, world\"\r\n// asks, and greets by name\r\n"
                              "input.text \"who\",\"Your name?\"\r\nset.greeting \"Dear\"\r\n"
                              "note.down Hello +?+, you are +?+!+(set.who+set.greeting)\r\n"
                              "note.unknown os.path_desktop\r\n";
    QString m_target;
    QString m_suffix;
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
    if (arguments.contains(u"zh"_s)) {
        plum::installTranslation(application, QLocale(QLocale::Chinese, QLocale::China));
        suffix += u"-zh"_s;
    }
    Painter(QDir::current().absoluteFilePath(arguments.value(1)), suffix).paintAll();
    return 0;
}
