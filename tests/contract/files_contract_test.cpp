#include "contract/contract_test.h"

#include "platform/paths.h"
#include "platform/session.h"
#include "platform/shell.h"
#include "support/least_time.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtEndian>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

class PathsPort : public ContractTest
{
protected:
    Paths &paths() { return platform->paths(); }

    QString write(const QString &name, const QByteArray &content)
    {
        const QString path = folder() + u'/' + name;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }

    QByteArray read(const QString &path)
    {
        QFile file(paths().toSystem(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    static QString asScriptsWriteIt(QString path) { return path.replace(u'/', u'\\'); }
};

class ShellPort : public PathsPort
{
protected:
    Shell &shell() { return platform->shell(); }

    static QString peer()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/" PLUM_CONTRACT_PEER);
    }

    // What the peer says that was told to write into the file `name`.
    QString answer(const QString &name)
    {
        QString said;
        EXPECT_TRUE(waitUntil([&] {
            QFile file(folder() + u'/' + name);
            said = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
            return said.endsWith(u'\n');
        }));
        return said.trimmed();
    }
};

class SessionPort : public ContractTest
{
};

} // namespace

TEST_F(PathsPort, programFolderHasNoSeparatorAtItsEnd)
{
    const QString folder = paths().programFolder();
    EXPECT_FALSE(folder.isEmpty());
    EXPECT_FALSE(folder.endsWith(u'/') || folder.endsWith(u'\\')) << folder.toStdString();
}

TEST_F(PathsPort, programFolderIsThatOfTheProgram)
{
    EXPECT_EQ(
        asScriptsWriteIt(paths().programFolder()), asScriptsWriteIt(QCoreApplication::applicationDirPath()));
}

TEST_F(PathsPort, takeEitherSeparator)
{
    QDir(folder()).mkpath(u"sub/deep"_s);
    write(u"sub/deep/file.txt"_s, "content");
    EXPECT_EQ(read(folder() + u"\\sub\\deep\\file.txt"_s), "content");
    EXPECT_EQ(read(folder() + u"/sub/deep/file.txt"_s), "content");
    EXPECT_EQ(read(asScriptsWriteIt(folder()) + u"\\sub/deep\\file.txt"_s), "content");
}

TEST_F(PathsPort, areFoundWhateverTheirLetterCase)
{
    QDir(folder()).mkpath(u"Sub/Deep"_s);
    write(u"Sub/Deep/File.TXT"_s, "content");
    EXPECT_EQ(read(folder() + u"\\sub\\DEEP\\file.txt"_s), "content");
}

TEST_F(PathsPort, thatDoNotExistStayAsWritten)
{
    QDir(folder()).mkpath(u"Sub"_s);
    const QString path = paths().toSystem(folder() + u"\\sub\\New File.txt"_s);
    EXPECT_TRUE(path.endsWith(u"New File.txt"_s)) << path.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("made");
    file.close();
    EXPECT_EQ(read(folder() + u"\\Sub\\New File.txt"_s), "made");
    EXPECT_EQ(QDir(folder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{u"Sub"_s});
}

TEST_F(PathsPort, haveNothingToDoWithTheEmptyOne)
{
    EXPECT_EQ(paths().toSystem(QString()), QString());
}

TEST_F(ShellPort, startsAProgramWithItsParametersAsWords)
{
    const QString log = folder() + u"/said"_s;
    EXPECT_TRUE(
        shell().open(peer(), u"\"%1\" arguments one \"two words\" 中文"_s.arg(log), ShowState::Normal));
    EXPECT_EQ(answer(u"said"_s), u"arguments <one><two words><中文>");
}

TEST_F(ShellPort, startsAProgramByAPathWithEitherSeparator)
{
    const QString log = folder() + u"/said"_s;
    EXPECT_TRUE(shell().open(asScriptsWriteIt(peer()), u"\"%1\" arguments x"_s.arg(log), ShowState::Normal));
    EXPECT_EQ(answer(u"said"_s), u"arguments <x>");
}

TEST_F(ShellPort, startsNothingThatIsMissing)
{
    EXPECT_FALSE(shell().open(folder() + u"/missing"_s, QString(), ShowState::Normal));
    EXPECT_FALSE(shell().open(folder() + u"/missing.exe"_s, u"x"_s, ShowState::Normal));
    EXPECT_FALSE(shell().open(u"no-such-program-anywhere"_s, QString(), ShowState::Normal));
}

TEST_F(ShellPort, startsNothingForNoTarget)
{
    EXPECT_FALSE(shell().open(QString(), u"x"_s, ShowState::Normal));
}

TEST_F(ShellPort, handsAHelperItsCommandLineWhole)
{
    // The peer has to find its own two words in it.
    const QString line = folder() + u"/said command-line _url_|||a  'b' c|||D:\\d \\e"_s;
    EXPECT_TRUE(shell().startHelper(peer(), line, ShowState::Normal));
    EXPECT_EQ(answer(u"said"_s), u"line _url_|||a  'b' c|||D:\\d \\e");
}

TEST_F(ShellPort, startsNoHelperThatIsMissing)
{
    EXPECT_FALSE(shell().startHelper(folder() + u"/helper.exe"_s, u"x"_s, ShowState::Normal));
    EXPECT_FALSE(shell().startHelper(write(u"text.exe"_s, "no program"), u"x"_s, ShowState::Normal));
}

TEST_F(ShellPort, desktopFolderIsAFolder)
{
    const QString desktop = shell().desktopFolder();
    EXPECT_FALSE(desktop.isEmpty());
    EXPECT_TRUE(QDir(paths().toSystem(desktop)).exists()) << desktop.toStdString();
}

TEST_F(ShellPort, whatIsNoShortcutIsItsOwnTarget)
{
    const QString document = asScriptsWriteIt(write(u"a.txt"_s, "text"));
    EXPECT_EQ(shell().shortcutTarget(document), document);
    const QString broken = asScriptsWriteIt(write(u"broken.lnk"_s, "text"));
    EXPECT_EQ(shell().shortcutTarget(broken), broken);
    const QString missing = asScriptsWriteIt(folder() + u"/missing.lnk"_s);
    EXPECT_EQ(shell().shortcutTarget(missing), missing);
}

TEST_F(ShellPort, readsWhereAShortcutPoints)
{
    const auto number = [](quint32 value) {
        value = qToLittleEndian(value);
        return QByteArray(reinterpret_cast<const char *>(&value), 4);
    };
    // A shell link that says nothing but its target's path, in its link information.
    const QByteArray target = "C:\\windows\\notepad.exe";
    const QByteArray volume = number(17) + number(3) + number(0) + number(16) + '\0';
    constexpr quint32 infoHeader = 0x1C;
    const auto volumeEnd = infoHeader + static_cast<quint32>(volume.size());
    const auto suffix = volumeEnd + static_cast<quint32>(target.size()) + 1;
    const QByteArray info = number(infoHeader) + number(1) + number(infoHeader) + number(volumeEnd)
        + number(0) + number(suffix) + volume + target + '\0' + '\0';
    const QByteArray link = number(0x4C) + QByteArray::fromHex("0114020000000000C000000000000046") + number(2)
        + QByteArray(36, '\0') + number(1) + QByteArray(12, '\0')
        + number(static_cast<quint32>(info.size() + 4)) + info;
    const QString path = asScriptsWriteIt(write(u"notepad.lnk"_s, link));
    EXPECT_EQ(asScriptsWriteIt(shell().shortcutTarget(path)).toLower(), u"c:\\windows\\notepad.exe");
}

TEST_F(SessionPort, saysWhenTheTrayAnswersOrThatThereIsNone)
{
    bool answered = false;
    platform->whenTrayAnswers([&] { answered = true; });
    EXPECT_TRUE(waitUntil([&] { return answered; }));
}

TEST_F(SessionPort, answersWithinTwoSeconds)
{
    constexpr qint64 promised = 2000; // milliseconds
    EXPECT_LT(test::leastTime(promised, [&] { platform->session().monitorOff(); }), promised);
    EXPECT_LT(test::leastTime(promised, [&] { platform->session().lockScreen(); }), promised);
}

} // namespace plum::contract
