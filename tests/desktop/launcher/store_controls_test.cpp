#include "desktop/support/heard_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The store's window with what it offers beside its page, ordered as the launcher orders it.
class StoreControlsTest : public HeardDesktop
{
protected:
    void SetUp() override
    {
        HeardDesktop::SetUp();
        server().start(m_window, QStringLiteral(PLUM_STORE_WINDOW),
            {u"--download-base"_s, u"http://127.0.0.1:8642/plum/download/"_s});
        ASSERT_TRUE(m_window.waitForStarted());
    }

    void TearDown() override
    {
        m_window.closeWriteChannel();
        EXPECT_TRUE(m_window.waitForFinished(60'000));
        HeardDesktop::TearDown();
    }

    void order(const QByteArray &line)
    {
        m_window.write(line + '\n');
        m_window.waitForBytesWritten();
    }

    // What the window has told the launcher so far has this in it.
    bool tells(const QByteArray &words)
    {
        return eventually([&] {
            m_window.waitForReadyRead(50);
            m_told += m_window.readAllStandardOutput();
            return m_told.contains(words);
        });
    }

private:
    QProcess m_window;
    QByteArray m_told;
};

} // namespace

TEST_F(StoreControlsTest, installedAppsAreHadAnewOrUpdatedWithTheKeyboard)
{
    order(R"({"verb":"apps","apps":[{"keyword":"alpha","version":"1"},)"
          R"({"keyword":"beta","version":"1","newest":"2"}]})");
    order(R"({"verb":"show"})");
    ASSERT_TRUE(hears(u"frame"_s, u"Plum"_s));
    tabTo(u"push button"_s, u"Installed apps"_s);
    hands->key(u"Return"_s);
    ASSERT_TRUE(hears(u"menu item"_s, u"alpha 1 is installed: Reinstall"_s));
    ASSERT_TRUE(hears(u"menu item"_s, u"beta 1 is installed: Update to 2"_s));
    hands->key(u"Down"_s);
    ASSERT_TRUE(hears(u"menu item"_s, u"alpha 1 is installed: Reinstall"_s, u"focused"_s));
    hands->key(u"Down"_s);
    ASSERT_TRUE(hears(u"menu item"_s, u"beta 1 is installed: Update to 2"_s, u"focused"_s));
    hands->key(u"Return"_s);
    EXPECT_TRUE(tells(R"({"keyword":"beta","verb":"anew"})"));
}

TEST_F(StoreControlsTest, whatFailedIsTriedAgainWithTheKeyboard)
{
    order(R"({"verb":"show"})");
    ASSERT_TRUE(hears(u"frame"_s, u"Plum"_s));
    order(R"({"verb":"failed","keyword":"alpha"})");
    ASSERT_TRUE(hears(u"label"_s, u"alpha was not installed"_s));
    tabTo(u"push button"_s, u"Retry alpha"_s);
    hands->key(u"Return"_s);
    EXPECT_TRUE(tells(R"({"verb":"retry"})"));
    hands->key(u"Escape"_s);
    EXPECT_TRUE(tells(R"({"verb":"close"})"));
}

} // namespace plum
