#include "platform/shortcut_file.h"

#include "platform/linux/desktop_entry.h"
#include "platform/linux/file_paths.h"
#include "platform/linux/linux_text_codec.h"
#include "platform/x11/x11_shell.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QByteArray u16(quint16 value)
{
    value = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&value), 2);
}

QByteArray u32(quint32 value)
{
    value = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&value), 4);
}

QByteArray wide(const QString &text)
{
    QByteArray bytes;
    for (const QChar c : text)
        bytes += u16(c.unicode());
    return bytes;
}

QByteArray header(quint32 flags)
{
    return u32(0x4C) + QByteArray::fromHex("0114020000000000C000000000000046") + u32(flags)
        + QByteArray(52, '\0');
}

// Link information with 8-bit texts alone.
QByteArray localInfo(const QByteArray &base, const QByteArray &suffix = {})
{
    const auto suffixAt = static_cast<quint32>(0x1C + base.size() + 1);
    const QByteArray body
        = u32(0x1C) + u32(1) + u32(0) + u32(0x1C) + u32(0) + u32(suffixAt) + base + '\0' + suffix + '\0';
    return u32(static_cast<quint32>(body.size() + 4)) + body;
}

class ShortcutTest : public testing::Test
{
protected:
    QString target(const QByteArray &bytes)
    {
        const auto found = readShortcut(bytes, codec);
        return found ? found->path : u"(nothing)"_s;
    }

    LinuxTextCodec codec;
};

} // namespace

TEST_F(ShortcutTest, readsTheLocalPath)
{
    EXPECT_EQ(target(header(2) + localInfo("C:\\Windows\\notepad.exe")), u"C:\\Windows\\notepad.exe"_s);
}

TEST_F(ShortcutTest, joinsBaseAndSuffix)
{
    EXPECT_EQ(target(header(2) + localInfo("D:\\share\\", "a.txt")), u"D:\\share\\a.txt"_s);
}

TEST_F(ShortcutTest, skipsTheTargetIdList)
{
    EXPECT_EQ(target(header(3) + u16(5) + "abcde" + localInfo("C:\\x.exe")), u"C:\\x.exe"_s);
}

TEST_F(ShortcutTest, prefersTheUnicodePath)
{
    const QByteArray ansi = QByteArray("C:\\??.exe") + '\0';
    const QByteArray unicode = wide(u"C:\\你好.exe"_s) + u16(0);
    const auto unicodeAt = static_cast<quint32>(0x24 + ansi.size());
    const auto endAt = static_cast<quint32>(unicodeAt + unicode.size());
    const QByteArray body = u32(0x24) + u32(1) + u32(0) + u32(0x24) + u32(0) + u32(endAt) + u32(unicodeAt)
        + u32(endAt) + ansi + unicode + u16(0);
    EXPECT_EQ(target(header(2) + u32(static_cast<quint32>(body.size() + 4)) + body), u"C:\\你好.exe"_s);
}

TEST_F(ShortcutTest, readsANetworkPath)
{
    const QByteArray share
        = u32(0x14 + 10) + u32(2) + u32(0x14) + u32(0) + u32(0x20000) + "\\\\srv\\pub" + '\0';
    const auto suffixAt = static_cast<quint32>(0x1C + share.size());
    const QByteArray body
        = u32(0x1C) + u32(2) + u32(0) + u32(0) + u32(0x1C) + u32(suffixAt) + share + "a.txt" + '\0';
    EXPECT_EQ(
        target(header(2) + u32(static_cast<quint32>(body.size() + 4)) + body), u"\\\\srv\\pub\\a.txt"_s);
}

TEST_F(ShortcutTest, readsTheTargetWithEnvironmentVariables)
{
    QByteArray block = u32(0x314) + u32(0xA0000001) + QByteArray("%windir%\\a.exe").leftJustified(260, '\0')
        + wide(u"%windir%\\notepad.exe"_s).leftJustified(520, '\0');
    const QByteArray other = u32(8) + u32(0xA0000002);
    EXPECT_EQ(target(header(0x200) + other + block + u32(0)), u"%windir%\\notepad.exe"_s);
    block.replace(268, 520, QByteArray(520, '\0'));
    EXPECT_EQ(target(header(0x200) + block + u32(0)), u"%windir%\\a.exe"_s);
}

TEST_F(ShortcutTest, fallsBackToTheRelativePath)
{
    const QByteArray strings
        = u16(4) + wide(u"name"_s) + u16(8) + wide(u"..\\a.exe"_s) + u16(1) + wide(u"-"_s);
    const auto found = readShortcut(header(0x80 | 0x4 | 0x8 | 0x20) + strings + u32(0), codec);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->path, u"..\\a.exe"_s);
    EXPECT_TRUE(found->isRelative);
}

TEST_F(ShortcutTest, eightBitStringsCountBytes)
{
    EXPECT_EQ(target(header(0x8) + u16(5) + "a.exe"), u"a.exe"_s);
}

TEST_F(ShortcutTest, bytesThatAreNoLinkHaveNoTarget)
{
    EXPECT_FALSE(readShortcut({}, codec));
    EXPECT_FALSE(readShortcut("[Desktop Entry]", codec));
    EXPECT_FALSE(readShortcut(header(0), codec));
    QByteArray wrongClass = header(2) + localInfo("C:\\x");
    wrongClass[5] = 'x';
    EXPECT_FALSE(readShortcut(wrongClass, codec));
}

TEST_F(ShortcutTest, aLinkCutAnywhereIsSafe)
{
    const QByteArray whole
        = header(0x80 | 3 | 0x8) + u16(3) + "abc" + localInfo("C:\\x.exe") + u16(2) + wide(u"ab"_s) + u32(0);
    for (qsizetype size = 0; size < whole.size(); ++size)
        readShortcut(whole.first(size), codec);
    EXPECT_EQ(target(whole), u"C:\\x.exe"_s);
}

// Whatever it makes of them, it reads nothing that is not there: with the address sanitizer, this says so.
TEST_F(ShortcutTest, lengthsThatPointOutsideAreSafe)
{
    for (qsizetype at = 0; at + 4 <= 0x60; at += 1) {
        for (const quint32 hostile : {0u, 1u, 0x7fffffffu, 0xffffffffu}) {
            QByteArray link = header(3) + u16(0) + localInfo("C:\\x.exe", "y");
            link.replace(at, 4, u32(hostile));
            readShortcut(link, codec);
        }
    }
    EXPECT_EQ(target(header(3) + u16(0) + localInfo("C:\\x.exe", "y")), u"C:\\x.exey"_s);
}

TEST_F(ShortcutTest, filesOnTheDiskAreReadByTheirEnding)
{
    const QTemporaryDir folder;
    const FilePaths paths(folder.path() + u"/plum"_s);
    X11Shell shell(paths);
    const auto file = [&](const QString &name, const QByteArray &bytes) {
        const QString path = folder.path() + u'/' + name;
        QFile made(path);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(bytes) == bytes.size());
        return path;
    };
    const QByteArray link = header(2) + localInfo("C:\\x.exe");
    EXPECT_EQ(shell.shortcutTarget(file(u"a.lnk"_s, link)), u"C:\\x.exe"_s);
    EXPECT_EQ(
        shell.shortcutTarget(file(u"b.lnk"_s, header(0x8) + u16(5) + "c.txt")), folder.path() + u"\\c.txt"_s);
    EXPECT_EQ(shell.shortcutTarget(file(u"x.desktop"_s, "[Desktop Entry]\nType=Link\nURL=file:///tmp\n")),
        u"/tmp"_s);
    for (const QString &unchanged : {file(u"broken.lnk"_s, "nothing"), file(u"a.txt"_s, link),
             file(u"A.LNK"_s, link), folder.path() + u"/missing.lnk"_s, folder.path()})
        EXPECT_EQ(shell.shortcutTarget(unchanged), unchanged);
}

TEST(DesktopEntry, readsTheProgramOfAnApplication)
{
    EXPECT_EQ(readDesktopEntry("[Desktop Entry]\nType=Application\nExec=/usr/bin/xterm -e %f\n"),
        u"/usr/bin/xterm"_s);
    EXPECT_EQ(readDesktopEntry("[Desktop Entry]\nType=Application\nExec=\"/opt/my app/run\" %U\n"),
        u"/opt/my app/run"_s);
    EXPECT_EQ(
        readDesktopEntry("[Desktop Entry]\r\nType=Application\r\nExec=/opt/my\\sapp\r\n"), u"/opt/my"_s);
}

TEST(DesktopEntry, readsTheAddressOfALink)
{
    EXPECT_EQ(readDesktopEntry("[Desktop Entry]\nType=Link\nURL=https://example.org/\n"),
        u"https://example.org/"_s);
    EXPECT_EQ(readDesktopEntry("[Desktop Entry]\nType=Link\nURL=file:///tmp/a%20b\n"), u"/tmp/a b"_s);
}

TEST(DesktopEntry, readsThePathOfAFolder)
{
    EXPECT_EQ(readDesktopEntry("[Desktop Entry]\nType=Directory\nPath=/tmp\n"), u"/tmp"_s);
}

TEST(DesktopEntry, otherGroupsAndCommentsDoNotCount)
{
    EXPECT_EQ(readDesktopEntry("# c\nExec=/no\n[Desktop Entry]\nType=Application\n#Exec=/no\nExec=/yes\n"
                               "[Desktop Action New]\nExec=/no\n"),
        u"/yes"_s);
}

TEST(DesktopEntry, whatNamesNothingHasNoTarget)
{
    EXPECT_FALSE(readDesktopEntry({}));
    EXPECT_FALSE(readDesktopEntry("[Desktop Entry]\nType=Application\n"));
    EXPECT_FALSE(readDesktopEntry("[Desktop Entry]\nExec=/x\n"));
    EXPECT_FALSE(readDesktopEntry(QByteArray("\xff\xfe\x00[", 4)));
}

} // namespace plum
