#include "desktop/support/store_desktop.h"

#include <QProcess>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What the user is told at the end of an install.
enum class Told {
    Success,
    Error, // in a box, with a reason
    InTitle, // nothing but the store window's title, which says why
};

struct Fault
{
    QString name; // of tests/support/faulty_store.py
    Told told;
    QString title = {}; // of the store window in the end
    bool isCutFirst = false; // the first attempt is cut, which is told in the title, and the second goes on
    bool takesLong = false; // and is therefore looked at only where there is an app to lose
};

// Tests are listed with their parameter.
void PrintTo(const Fault &fault, std::ostream *out)
{
    *out << fault.name.toStdString();
}

const QString cutOff = u"下载被终止..."_s;

const std::vector<Fault> faults{
    {u"fine"_s, Told::Success},
    {u"gone"_s, Told::InTitle, u"连接服务器失败"_s},
    {u"moved"_s, Told::Success},
    {u"lost"_s, Told::Error},
    {u"page"_s, Told::Error},
    {u"zipped"_s, Told::Error},
    {u"cut"_s, Told::InTitle, cutOff},
    {u"short"_s, Told::Error},
    {u"deaf"_s, Told::Error, {}, true},
    {u"changed"_s, Told::Error, {}, true},
    {u"resumed"_s, Told::Success, {}, true},
    {u"beyond"_s, Told::Error, {}, true},
    {u"slow"_s, Told::Success},
    {u"silent"_s, Told::InTitle, cutOff, false, true},
};

// A store whose packages come with a server's faults, installed once as new apps and once in place of old
// ones, by hand on a real desktop.
class StoreFaults : public StoreDesktop
{
protected:
    static QString newKeyword(const Fault &fault) { return u"new-"_s + fault.name; }
    static QString oldKeyword(const Fault &fault) { return u"old-"_s + fault.name; }

    void SetUp() override
    {
        StoreDesktop::SetUp();
        QStringList arguments{QStringLiteral(PLUM_TESTS_FOLDER "/support/faulty_store.py"),
            QString::number(shop->url().port())};
        for (const Fault &fault : faults) {
            arguments << newKeyword(fault) << oldKeyword(fault);
            writeApp(oldKeyword(fault), {u"//guide:%1, old"_s.arg(oldKeyword(fault))});
            write(u"config/apps/%1/mine.txt"_s.arg(oldKeyword(fault)), "what the user wrote");
        }
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(u"python3"_s, arguments);
        while (!m_server.canReadLine() && m_server.waitForReadyRead()) { }
        ASSERT_TRUE(m_server.canReadLine());
        startLauncher();
        click(u"frmSet/store"_s);
        ASSERT_TRUE(pageShows(
            u"document.readyState == 'complete' && document.links.length == %1"_s.arg(2 * faults.size())));
    }

    void TearDown() override
    {
        StoreDesktop::TearDown();
        m_server.closeWriteChannel();
        m_server.waitForFinished();
    }

    // Follows the link to a package and agrees to its install, in place of the app that is there or as a new
    // one.
    void begin(const QString &keyword, bool replaces)
    {
        clickInPage(u"#"_s + keyword);
        if (replaces) {
            ASSERT_TRUE(shows(u"shurubox/Text4"_s, keyword));
            click(u"shurubox/Label3"_s);
        }
        agree(keyword);
    }

    // The server waits until the dialog is gone: a click that came too late for it must not meet the box with
    // the result.
    void agree(const QString &keyword)
    {
        agreeToInstall(keyword);
        m_server.write("begin\n");
    }

    // Waits for the end of an install and returns what a box said about it; empty when there was none.
    QString endOf(const Fault &fault, const QString &keyword)
    {
        if (fault.told == Told::InTitle) {
            // The title may be that of an earlier end. An old app is away until this one, which may take the
            // 30 seconds of a server's silence.
            EXPECT_TRUE(test::waitUntil([&] {
                return hasWindow(fault.title) && (keyword == newKeyword(fault) || isThere(keyword));
            }));
            return {};
        }
        EXPECT_TRUE(appears(u"message/message"_s));
        const QString said = textOf(u"message/message"_s);
        click(u"message/OK"_s);
        EXPECT_TRUE(disappears(u"message/message"_s));
        EXPECT_TRUE(eventually([this] { return hasWindow(u"Download completed"_s); }));
        return said;
    }

    bool isNewAndWhole(const QString &keyword) const
    {
        QByteArray content;
        for (int i = 0; i < 9000; ++i)
            content += static_cast<char>((i * 31 + 1) % 251);
        return read(u"config/apps/%1/main.wf"_s.arg(keyword)) == "//guide:" + keyword.toUtf8() + ", new\r\n"
            && read(u"config/apps/%1/content"_s.arg(keyword)) == content;
    }

    bool isOld(const QString &keyword) const
    {
        const QString folder = programFolder() + u"/config/apps/"_s + keyword;
        return read(u"config/apps/%1/main.wf"_s.arg(keyword)) == "//guide:" + keyword.toUtf8() + ", old\r\n"
            && QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
            == QStringList{u"main.wf"_s, u"mine.txt"_s};
    }

    bool isListed(const QString &keyword) { return see(u"frmSet/List"_s).items.contains(keyword); }
    bool isThere(const QString &keyword) const
    {
        return QFileInfo::exists(programFolder() + u"/config/apps/"_s + keyword);
    }

    // What the box said is true, and of the new app all is there or nothing.
    void expectTruth(const Fault &fault, const QString &said, const QString &keyword)
    {
        if (fault.told == Told::Success) {
            EXPECT_EQ(said, u"installed successfully"_s);
            EXPECT_TRUE(isNewAndWhole(keyword));
        } else {
            EXPECT_TRUE(said.isEmpty() || said.startsWith(u"Error\n\n"_s)) << said.toStdString();
            EXPECT_EQ(said.isEmpty(), fault.told == Told::InTitle);
            EXPECT_FALSE(isNewAndWhole(keyword));
        }
    }

    // Nothing of an install is left, and each app that is listed is there as a whole, the others not at all.
    void expectCleanLibrary()
    {
        const QString unpacking = programFolder() + u"/config/unpacking"_s;
        const auto left = [&] { return QDir(unpacking).entryList(QDir::Dirs | QDir::NoDotAndDotDot); };
        EXPECT_TRUE(eventually([&] { return left().isEmpty(); })) << left().join(u' ').toStdString();
        for (const Fault &each : faults) {
            const QString fresh = newKeyword(each);
            const QString old = oldKeyword(each);
            EXPECT_EQ(isListed(fresh), isNewAndWhole(fresh)) << fresh.toStdString();
            EXPECT_EQ(isThere(fresh), isNewAndWhole(fresh)) << fresh.toStdString();
            EXPECT_TRUE(isListed(old)) << old.toStdString();
            EXPECT_TRUE(isOld(old) || isNewAndWhole(old)) << old.toStdString();
        }
    }

    void install(const Fault &fault, const QString &keyword, bool replaces)
    {
        begin(keyword, replaces);
        if (fault.isCutFirst) {
            ASSERT_TRUE(eventually([&] { return hasWindow(cutOff) && isThere(keyword) == replaces; }));
            expectCleanLibrary();
            begin(keyword, replaces);
        }
        expectTruth(fault, endOf(fault, keyword), keyword);
        expectCleanLibrary();
    }

private:
    QProcess m_server;
};

class EveryFault : public StoreFaults, public testing::WithParamInterface<Fault>
{
};

} // namespace

TEST_P(EveryFault, LosesNoAppListsNoneThatIsNotWholeAndTellsTheTruth)
{
    const Fault &fault = GetParam();
    const QString fresh = newKeyword(fault);
    const QString old = oldKeyword(fault);
    if (!fault.takesLong)
        install(fault, fresh, false);
    install(fault, old, true);
    EXPECT_EQ(isOld(old), fault.told != Told::Success);
    EXPECT_EQ(read(u"config/apps/%1/mine.txt"_s.arg(old)), "what the user wrote");
}

INSTANTIATE_TEST_SUITE_P(All, EveryFault, testing::ValuesIn(faults),
    [](const auto &fault) { return fault.param.name.toStdString(); });

} // namespace plum
