#include "library/settings_file.h"
#include "platform/platform.h"
#include "platform/text_codec.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <qt_windows.h>

// The settings file is read and written by rules of our own, which are to be those of the system's calls.

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class PrivateProfile : public testing::Test
{
protected:
    QString path() const { return QDir::toNativeSeparators(m_folder.filePath(u"set.ini"_s)); }

    void put(const QByteArray &content)
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray content()
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString bySystem(const QString &section, const QString &key)
    {
        std::array<wchar_t, 2048> value{};
        const DWORD length = GetPrivateProfileStringW(reinterpret_cast<const wchar_t *>(section.utf16()),
            reinterpret_cast<const wchar_t *>(key.utf16()), L"", value.data(),
            static_cast<DWORD>(value.size()), reinterpret_cast<const wchar_t *>(path().utf16()));
        return QString::fromWCharArray(value.data(), static_cast<qsizetype>(length));
    }

    void writeBySystem(const QString &section, const QString &key, const QString &value)
    {
        ASSERT_TRUE(WritePrivateProfileStringW(reinterpret_cast<const wchar_t *>(section.utf16()),
            reinterpret_cast<const wchar_t *>(key.utf16()), reinterpret_cast<const wchar_t *>(value.utf16()),
            reinterpret_cast<const wchar_t *>(path().utf16())));
    }

    TextCodec &codec() { return m_platform->textCodec(); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Platform> m_platform = createPlatform({});
};

} // namespace

TEST_F(PrivateProfile, isReadAsTheSystemReadsIt)
{
    for (const QByteArray text :
        {"[hotkey]\r\nhotkey=Ctrl+Q\r\n", "[HotKey]\r\nHOTKEY=Alt+A",
            " \t[hotkey] \r\n  hotkey \t=  Alt+A \t\r\n", "[hotkey]\r\nhotkey=\" a \"\r\n",
            "[hotkey]\r\nhotkey='a'\r\n", "[hotkey]\r\nhotkey=\"\"a\"\"\r\n", "[hotkey]\r\nhotkey=\"a'\r\n",
            "[hotkey]\r\nhotkey=\"\r\n", "[other]\r\nhotkey=x\r\n", "[hotkey]\r\nother=x\r\n", "hotkey=x\r\n",
            "", "[hotkey]\r\nhotkey=\r\n", "[hotkey]\r\nhotkey=a=b\r\n", "[hotkey]\nhotkey=one\n",
            "[hotkey]\r\n;hotkey=comment\r\nhotkey=value\r\n", "[hotkey]\r\nhotkey=1\r\nhotkey=2\r\n",
            "[a]\r\nhotkey=1\r\n[hotkey]\r\nhotkey=2\r\n[hotkey]\r\nhotkey=3\r\n"}) {
        put(text);
        EXPECT_EQ(profileValue(content(), u"hotkey", u"hotkey", codec()), bySystem(u"hotkey"_s, u"hotkey"_s))
            << text.toStdString();
    }
}

TEST_F(PrivateProfile, thatWeWriteIsReadByTheSystem)
{
    for (const QByteArray before : {"", "[hotkey]\r\nhotkey=Ctrl+Q\r\n", "[other]\r\na=b\r\n",
             "[hotkey]\r\nother=1\r\n[last]\r\nx=y", "[HOTKEY]\r\nHotKey = \"old\"\r\n"}) {
        for (const QString &value : {u"Alt+Z"_s, QString(), u"é ü"_s, u"a=b;c"_s}) {
            put(withProfileValue(before, u"hotkey", u"hotkey", value, codec()));
            EXPECT_EQ(bySystem(u"hotkey"_s, u"hotkey"_s), value) << before.toStdString();
        }
    }
}

TEST_F(PrivateProfile, thatTheSystemWroteIsReadByUs)
{
    for (const QByteArray before : {"", "[hotkey]\r\nhotkey=Ctrl+Q\r\n", "[other]\r\na=b\r\n"}) {
        for (const QString &value : {u"Alt+Z"_s, u"é ü"_s, u"a=b;c"_s}) {
            put(before);
            writeBySystem(u"hotkey"_s, u"hotkey"_s, value);
            EXPECT_EQ(profileValue(content(), u"hotkey", u"hotkey", codec()), value) << before.toStdString();
        }
    }
}

} // namespace plum
