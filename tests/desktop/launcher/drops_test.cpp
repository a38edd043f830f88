#include "desktop/support/launcher_desktop.h"
#include "support/wait_until.h"

#include <QDir>
#include <QUrl>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Files dragged with the mouse from the window of another program.
class DropsTest : public LauncherDesktop
{
protected:
    static constexpr QRect sourceArea{20, 40, 150, 120};

    void SetUp() override
    {
        LauncherDesktop::SetUp();
        writeApp(u"alpha"_s, {u"me.hide"_s});
        write(u"config/load/config.txt"_s, "alpha\r\n");
    }

    void TearDown() override
    {
        m_source.kill();
        m_source.waitForFinished();
        LauncherDesktop::TearDown();
    }

    void startSource()
    {
        write(u"dragged.txt"_s, {});
        server().start(m_source, QStringLiteral(PLUM_DRAG_SOURCE),
            {programFolder() + u"/dragged.txt"_s,
                u"%1,%2,%3,%4"_s.arg(sourceArea.x())
                    .arg(sourceArea.y())
                    .arg(sourceArea.width())
                    .arg(sourceArea.height())});
        ASSERT_TRUE(eventually([&] { return view->windowTitled("Drag source") != XCB_NONE; }));
        ASSERT_TRUE(eventually([&] {
            return view->clientRectangle(view->windowTitled("Drag source")).size() == sourceArea.size();
        }));
    }

    // Drags these addresses to the control, which takes them.
    void drop(const QStringList &addresses, const QString &path)
    {
        pull(addresses, path);
        // A hand is never quite still, and each move asks the window under it once more. An answer may still
        // be that of a window on the way, so it has to hold for some moves.
        constexpr int enough = 15;
        constexpr int mostMoves = 150; // then the hand leaves the window and comes again, which offers anew
        const QPoint there = view->pointer();
        int moves = 0;
        ASSERT_TRUE(eventually([&] {
            if (++moves > mostMoves) {
                hands->moveTo(sourceArea.center());
                moves = 0;
            }
            hands->moveTo(there + QPoint(moves % 2, 0));
            hasSaid("taken");
            return moves > enough && m_said.endsWith("taken\n");
        })) << path.toStdString()
            << ": " << m_said.toStdString();
        hands->release();
        ASSERT_TRUE(sourceSays("dropped 1")) << path.toStdString();
    }

    // Drags them there in vain.
    void dropInVain(const QStringList &addresses, const QString &path)
    {
        pull(addresses, path);
        hands->release();
        ASSERT_TRUE(sourceSays("dropped 0")) << path.toStdString();
    }

    void pull(const QStringList &addresses, const QString &path)
    {
        write(u"dragged.txt"_s, addresses.join(u'\n').toUtf8());
        // Both windows have to be where they stay: a drag ends at a place, not at a control.
        const QPoint to = stillControl(path).middle();
        QRect source;
        ASSERT_TRUE(eventually([&] {
            const QRect before = source;
            source = view->clientRectangle(view->windowTitled("Drag source"));
            return view->isViewable(view->windowTitled("Drag source")) && source == before;
        }));
        const QPoint from = source.center();
        // A window manager may keep a press for itself when it makes the window the one in front.
        constexpr int attempts = 5;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (attempt > 0)
                hands->release();
            m_source.readAllStandardOutput();
            m_said.clear();
            hands->pull(from, to);
            const QDeadlineTimer patience(test::patience / attempts);
            while (!patience.hasExpired()) {
                if (hasSaid("dragging"))
                    return;
            }
        }
        FAIL() << "no drag to " << path.toStdString();
    }

    bool hasSaid(const QByteArray &word)
    {
        m_source.waitForReadyRead(20);
        m_said += m_source.readAllStandardOutput();
        return m_said.split('\n').contains(word);
    }

    bool sourceSays(const QByteArray &word)
    {
        return eventually([&] { return hasSaid(word); });
    }

    QString file(const QString &name) const { return QUrl::fromLocalFile(folder() + u'/' + name).toString(); }

    // A package with one script.
    QString package(const QString &name)
    {
        const QString content = folder() + u"/content"_s;
        QDir().mkpath(content);
        QFile script(content + u"/main.wf"_s);
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("//from a package\r\n");
        script.close();
        outputOf(u"zip"_s, {u"-q"_s, u"-j"_s, folder() + u"/package.zip"_s, script.fileName()});
        EXPECT_TRUE(QFile::rename(folder() + u"/package.zip"_s, folder() + u'/' + name));
        return file(name);
    }

    void makeShortcut(const QString &name, const QString &target)
    {
        QFile shortcut(folder() + u'/' + name);
        ASSERT_TRUE(shortcut.open(QIODevice::WriteOnly));
        shortcut.write("[Desktop Entry]\nType=Link\nName=x\nURL=file://" + target.toUtf8() + "\n");
    }

    // A shell link of Windows to a file beside it: a header that announces a relative path, and the path.
    void makeShellLink(const QString &name, const QByteArray &target)
    {
        QByteArray link = QByteArray::fromHex("4c0000000114020000000000c00000000000004608000000");
        link.append(76 - link.size(), 0);
        link += static_cast<char>(target.size());
        link += '\0';
        QFile shortcut(folder() + u'/' + name);
        ASSERT_TRUE(shortcut.open(QIODevice::WriteOnly));
        shortcut.write(link + target);
    }

private:
    QProcess m_source;
    QByteArray m_said;
};

} // namespace

TEST_F(DropsTest, aPackageOnAListIsInstalled)
{
    startLauncher();
    startSource();
    drop({package(u"tool.v2.wfp"_s)}, u"frmSet/List"_s);
    agreeToInstall(u"tool.v2"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(read(u"config/apps/tool.v2/main.wf"_s), "//from a package\r\n");
    EXPECT_TRUE(lists(u"frmSet/List"_s, {u"tool.v2"_s, u"alpha"_s}));
    EXPECT_EQ(read(u"config/load/config.txt"_s), "tool.v2\r\nalpha\r\n");

    // The same on the results.
    clickInto(u"frmSet/Text8"_s);
    hands->type(u"al"_s);
    ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"alpha"_s}));
    drop({package(u"more.wfp"_s)}, u"frmSet/List2"_s);
    agreeToInstall(u"more"_s);
    answer(u"Successfully"_s);
    EXPECT_TRUE(lists(u"frmSet/List2"_s, {u"more"_s, u"alpha"_s}));

    // Only the exact ending makes a package.
    for (const QString &name : {u"other.WFP"_s, u"other.txt"_s}) {
        QFile::copy(folder() + u"/more.wfp"_s, folder() + u'/' + name);
        drop({file(name)}, u"frmSet/List2"_s);
    }
    EXPECT_FALSE(QFileInfo::exists(programFolder() + u"/config/apps/other"_s));
    EXPECT_FALSE(isShown(u"message/message"_s));
}

TEST_F(DropsTest, aPackageOfAnExistingAppAsksForAnotherName)
{
    startLauncher();
    startSource();
    drop({package(u"alpha.wfp"_s)}, u"frmSet/List"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/Text4"_s));
    EXPECT_EQ(textOf(u"shurubox/Text4"_s), u"alpha"_s);
    EXPECT_TRUE(see(u"shurubox/shurubox"_s).topmost);
    EXPECT_EQ(read(u"config/apps/alpha/main.wf"_s), "me.hide\r\n");

    click(u"shurubox/Image2"_s);
    EXPECT_TRUE(shows(u"shurubox/Label6"_s, u"alpha  already exists"_s));
    clickInto(u"shurubox/Text4"_s);
    hands->key(u"ctrl+a"_s);
    hands->type(u"ALPHA"_s);
    click(u"shurubox/Image2"_s);
    EXPECT_TRUE(shows(u"shurubox/Label6"_s, u"ALPHA  already exists"_s));

    // The details and back.
    click(u"shurubox/Label4"_s);
    EXPECT_TRUE(appears(u"shurubox/setupbox"_s));
    EXPECT_EQ(textOf(u"shurubox/Text2"_s), folder() + u"/alpha.wfp"_s);
    EXPECT_EQ(textOf(u"shurubox/Text3"_s), u"alpha"_s);
    click(u"shurubox/setupback"_s);

    clickInto(u"shurubox/Text4"_s);
    hands->key(u"ctrl+a"_s);
    hands->type(u"second"_s);
    ASSERT_TRUE(shows(u"shurubox/Text4"_s, u"second"_s));
    click(u"shurubox/Image2"_s);
    agreeToInstall(u"second"_s);
    answer(u"Successfully"_s);
    EXPECT_FALSE(isShown(u"shurubox/Text4"_s));
    EXPECT_EQ(read(u"config/apps/second/main.wf"_s), "//from a package\r\n");
    EXPECT_TRUE(lists(u"frmSet/List"_s, {u"second"_s, u"alpha"_s}));

    // The other button replaces the existing one.
    drop({file(u"alpha.wfp"_s)}, u"frmSet/List"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/Text4"_s));
    click(u"shurubox/Label3"_s);
    agreeToInstall(u"alpha"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(read(u"config/apps/alpha/main.wf"_s), "//from a package\r\n");
}

TEST_F(DropsTest, aFileOnTheKeywordBoxIsForTheScript)
{
    writeApp(u"dropped"_s, {u"set.file me.drag"_s, resultLine(u"\"file\""_s)});
    makeShortcut(u"link.desktop"_s, u"/usr/share/x"_s);
    write(u"config/load/config.txt"_s, "dropped\r\n");
    startLauncher();
    startSource();
    clickInto(u"frmSet/Text8"_s);
    hands->type(u"dropped"_s);
    ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"dropped"_s}));
    const auto expectValue = [&](const QStringList &files, const QString &value) {
        drop(files, u"frmSet/Text8"_s);
        clickInto(u"frmSet/Text8"_s);
        hands->key(u"Return"_s);
        EXPECT_TRUE(eventually([&] { return results() == value.toUtf8() + "\r\n"; }))
            << results().toStdString();
        QFile::remove(programFolder() + u"/result.txt"_s);
        EXPECT_EQ(textOf(u"frmSet/Text8"_s), u"dropped"_s);
    };
    expectValue({file(u"one file.txt"_s), file(u"two.txt"_s)}, folder() + u"/one file.txt"_s);
    expectValue({file(u"link.desktop"_s)}, u"/usr/share/x"_s);
    makeShellLink(u"link.lnk"_s, "target.txt");
    expectValue({file(u"link.lnk"_s)}, folder() + u"\\target.txt"_s);

    // An address of another machine is no file.
    dropInVain({u"http://127.0.0.1/page"_s}, u"frmSet/Text8"_s);
    // A broken shortcut stands for itself, a folder too.
    QFile broken(folder() + u"/broken.lnk"_s);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("L\0\0\0", 4);
    broken.close();
    expectValue({file(u"broken.lnk"_s)}, folder() + u"/broken.lnk"_s);
    expectValue({QUrl::fromLocalFile(folder()).toString()}, folder());
}

TEST_F(DropsTest, filesOnTheEditorAddALineEach)
{
    makeShortcut(u"link.desktop"_s, u"/usr/share/x"_s);
    startLauncher();
    startSource();
    chooseForApp(u"alpha"_s, u"editok"_s);
    ASSERT_TRUE(getsFocus(u"frmSet/Text4"_s));
    drop({file(u"a.txt"_s), file(u"link.desktop"_s)}, u"frmSet/Text4"_s);
    const QString lines = u"me.hide\n%1/a.txt\n/usr/share/x\n"_s.arg(folder());
    EXPECT_TRUE(shows(u"frmSet/Text4"_s, lines)) << textOf(u"frmSet/Text4"_s).toStdString();

    QStringList thousand;
    QString expected = lines;
    for (int i = 0; i < 1000; ++i) {
        thousand += file(u"f%1.txt"_s.arg(i));
        expected += u"%1/f%2.txt\n"_s.arg(folder()).arg(i);
    }
    drop(thousand, u"frmSet/Text4"_s);
    EXPECT_TRUE(shows(u"frmSet/Text4"_s, expected));
    click(u"frmSet/Image5"_s);
    answer(u"Successfully"_s);
    EXPECT_EQ(read(u"config/apps/alpha/main.wf"_s), expected.replace(u"\n"_s, u"\r\n"_s).toUtf8());
}

TEST_F(DropsTest, aFileOnTheInputBoxFillsItsEntry)
{
    makeShortcut(u"link.desktop"_s, u"/usr/share/x"_s);
    writeApp(u"alpha"_s, {u"input.text \"answer\",\"Which file?\""_s, resultLine(u"\"answer\""_s)});
    startLauncher();
    startSource();
    clickInto(u"frmSet/Text8"_s);
    hands->type(u"alpha"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(getsFocus(u"shurubox/Text1"_s));
    drop({file(u"link.desktop"_s)}, u"shurubox/Text1"_s);
    EXPECT_TRUE(shows(u"shurubox/Text1"_s, u"/usr/share/x"_s));
    dropInVain({u"http://127.0.0.1/page"_s}, u"shurubox/Text1"_s);
    drop({file(u"b.txt"_s), file(u"c.txt"_s)}, u"shurubox/Text1"_s);
    EXPECT_TRUE(shows(u"shurubox/Text1"_s, folder() + u"/b.txt"_s));
    click(u"shurubox/Label1"_s);
    EXPECT_TRUE(eventually([&] { return results() == (folder() + u"/b.txt\r\n"_s).toUtf8(); }));
}

} // namespace plum
