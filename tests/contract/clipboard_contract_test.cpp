#include "contract/contract_test.h"

#include "platform/clipboard.h"

#include <QFile>

namespace plum::contract {

using namespace Qt::StringLiterals;

namespace {

// Of one line: Qt, which is on the other side, has its own ideas of line ends on Windows.
const QString mixed = u"剪贴板 \U0001F600 𠀀 and ASCII\tand a tab"_s;

class ClipboardPort : public ContractTest
{
protected:
    Clipboard &clipboard() { return platform->clipboard(); }

    // Megabytes whose pieces differ, so that a piece that is lost or doubled shows.
    static QString longText()
    {
        QString text;
        for (int piece = 0; text.size() < 1'000'000; ++piece)
            text += u"piece %1 of a long text 长; "_s.arg(piece);
        return text;
    }
};

// Another program is on the other side.
class ClipboardOfAll : public ClipboardPort
{
protected:
    QString write(const QString &text)
    {
        const QString path = folder() + u"/text"_s;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return path;
    }

    std::unique_ptr<PeerProgram> copyElsewhere(const QString &text)
    {
        auto program = start({u"copy"_s, write(text)});
        EXPECT_TRUE(waitUntil([&] { return !program->answer(u"copied"_s).isNull(); }));
        return program;
    }

    QString pasteElsewhere()
    {
        const auto program = start({u"paste"_s});
        EXPECT_TRUE(waitUntil([&] { return program->hasEnded(); }));
        return QString::fromUtf8(QByteArray::fromHex(program->answer(u"pasted"_s).toLatin1()));
    }
};

} // namespace

TEST_F(ClipboardPort, givesBackWhatWasSet)
{
    for (const QString &text :
        {u"hello"_s, mixed, QString(), u" "_s, u"one\r\ntwo\nthree\r\n"_s, longText()}) {
        clipboard().setText(text);
        EXPECT_EQ(clipboard().text(), text);
    }
}

TEST_F(ClipboardPort, isEmptyAfterClear)
{
    clipboard().setText(u"gone"_s);
    clipboard().clear();
    EXPECT_EQ(clipboard().text(), QString());
    clipboard().clear();
    EXPECT_EQ(clipboard().text(), QString());
}

TEST_F(ClipboardPort, tellsOfItsOwnChanges)
{
    int changes = 0;
    QObject::connect(&clipboard(), &Clipboard::changed, [&] { ++changes; });
    clipboard().setText(u"one"_s);
    EXPECT_TRUE(waitUntil([&] { return changes >= 1; }));
    const int before = changes;
    clipboard().clear();
    EXPECT_TRUE(waitUntil([&] { return changes > before; }));
}

TEST_F(ClipboardOfAll, givesTextToOthers)
{
    for (const QString &text : {u"hello"_s, mixed, longText()}) {
        clipboard().setText(text);
        EXPECT_EQ(pasteElsewhere(), text);
    }
    clipboard().clear();
    EXPECT_EQ(pasteElsewhere(), QString());
}

TEST_F(ClipboardOfAll, tellsThatOthersHaveTakenItsText)
{
    clipboard().setText(mixed);
    const std::optional<quint64> before = clipboard().timesTaken();
    EXPECT_EQ(clipboard().text(), mixed);
    EXPECT_EQ(clipboard().timesTaken(), before);
    EXPECT_EQ(pasteElsewhere(), mixed);
    EXPECT_GT(clipboard().timesTaken(), before);
}

TEST_F(ClipboardOfAll, takesTextOfOthers)
{
    for (const QString &text : {u"hello"_s, mixed, longText()}) {
        const auto program = copyElsewhere(text);
        EXPECT_TRUE(waitUntil([&] { return clipboard().text() == text; })) << text.size();
    }
}

TEST_F(ClipboardOfAll, isTakenBackFromOthers)
{
    clipboard().setText(u"first"_s);
    const auto program = copyElsewhere(u"second"_s);
    clipboard().setText(u"third"_s);
    EXPECT_EQ(clipboard().text(), u"third");
    EXPECT_EQ(pasteElsewhere(), u"third");
}

TEST_F(ClipboardOfAll, tellsOfTheChangesOfOthers)
{
    int changes = 0;
    clipboard().setText(u"mine"_s);
    QObject::connect(&clipboard(), &Clipboard::changed, [&] { ++changes; });
    const auto program = copyElsewhere(u"theirs"_s);
    EXPECT_TRUE(waitUntil([&] { return changes >= 1 && clipboard().text() == u"theirs"; }));
}

TEST_F(ClipboardOfAll, outlivesItsProcess)
{
    const auto program = start({u"leave"_s, write(mixed)});
    ASSERT_TRUE(waitUntil([&] { return program->hasEnded(); }));
    EXPECT_EQ(program->answer(u"left"_s), u"yes");
    EXPECT_TRUE(waitUntil([&] { return clipboard().text() == mixed; }));
}

TEST_F(ClipboardOfAll, readsOtherContentAsTheEmptyTextAndReplacesIt)
{
    clipboard().setText(u"before"_s);
    const auto program = start({u"copy-picture"_s});
    ASSERT_TRUE(waitUntil([&] { return !program->answer(u"copied"_s).isNull(); }));
    EXPECT_TRUE(waitUntil([&] { return clipboard().text().isEmpty(); }));
    clipboard().setText(u"text"_s);
    EXPECT_EQ(clipboard().text(), u"text");
    EXPECT_EQ(pasteElsewhere(), u"text");
}

} // namespace plum::contract
