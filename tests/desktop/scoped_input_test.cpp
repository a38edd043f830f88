// Runs whose keys go to one window alone, with another window that comes in between.

#include "desktop/support/script_test.h"

#include <QDir>
#include <QFile>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class ScopedInput : public ScriptTest<DesktopTest>
{
protected:
    void SetUp() override { startDesktop(u"openbox"_s); }

    // Whether the run has said these words by now.
    bool hasSaid(const QByteArray &words)
    {
        m_said += program().readAllStandardError();
        return m_said.contains(words);
    }

    void write(const QString &name, const QByteArray &content)
    {
        QFile file(folder() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private:
    QByteArray m_said;
};

} // namespace

TEST_F(ScopedInput, ANewWindowWithTheKeyboardGetsNothing)
{
    ASSERT_TRUE(bringToFront(probe->window()));
    const QString go = folder() + u"/go"_s;
    write(u"scoped.wf"_s,
        "//edition:2\nkeyboard.type \"a\"\nwait.file \"" + go.toUtf8()
            + "\",600000\nkeyboard.type \"bc\"\nmouse.click\nkeyboard.key_down shift\nkeyboard.key_up "
              "shift\n");
    server().start(program(), QFileInfo(QStringLiteral(PLUM_PROGRAM)).path() + u"/plumkit"_s,
        {u"run"_s, u"--scoped"_s, folder() + u"/scoped.wf"_s});
    ASSERT_TRUE(program().waitForStarted());
    ASSERT_TRUE(probe->sees(u"text a"_s)) << program().readAllStandardError().toStdString();

    const std::unique_ptr<Probe> popup = startProbe(u"popup"_s, {300, 250, 200, 100});
    ASSERT_TRUE(isReadyForUse(*popup));
    ASSERT_TRUE(bringToFront(popup->window()));
    popup->forget();
    write(u"go"_s, "");
    ASSERT_TRUE(eventually([this] { return hasSaid("waits until its window is in front again"); }));
    EXPECT_EQ(popup->seen({u"key"_s, u"press"_s, u"text"_s}), QStringList());

    ASSERT_TRUE(bringToFront(probe->window()));
    EXPECT_TRUE(probe->sees(u"text abc"_s));
    EXPECT_TRUE(program().waitForFinished(60'000));
    EXPECT_EQ(program().exitCode(), 0);
    EXPECT_EQ(popup->seen({u"key"_s, u"press"_s, u"text"_s}), QStringList());
}

} // namespace plum
