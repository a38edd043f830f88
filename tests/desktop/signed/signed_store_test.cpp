// The whole way with a store that signs, in the real program: an app is asked about with what the index says
// of it, runs under that, gets its update and is taken back.
#include "desktop/support/store_desktop.h"

#include <QLocale>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

class SignedStorePath : public StoreDesktop
{
protected:
    QString program() const override { return QStringLiteral(PLUM_OF_SIGNED_STORE); }

    void SetUp() override
    {
        StoreDesktop::SetUp();
        ASSERT_FALSE(HasFatalFailure());
        qputenv("PLUM_TEST_ROOT_KEY", shop->makeKeys());
        shop->addApp(u"parcel"_s, first);
        ASSERT_TRUE(shop->serve());
        startLauncher();
        click(u"frmSet/store"_s);
    }

    // Follows the link to a package in the store's catalogue.
    void follow(const QString &name)
    {
        const QString link = u"a.install[href$=\"/%1.wfp\"]"_s.arg(name);
        ASSERT_TRUE(
            pageShows(u"document.readyState == 'complete' && !!document.querySelector('%1')"_s.arg(link)));
        clickInPage(link);
        ASSERT_TRUE(appears(u"asks/asks"_s));
        EXPECT_EQ(textOf(u"asks/keyword"_s), name);
        ASSERT_TRUE(getsFocus(u"asks/install"_s));
    }

    // The launcher learns what the store has now when it asks about any package.
    void followAndCancel(const QString &name)
    {
        follow(name);
        hands->key(u"Escape"_s);
        ASSERT_TRUE(disappears(u"asks/asks"_s));
    }

    void installParcel()
    {
        follow(u"parcel"_s);
        agreeToInstall(u"parcel"_s);
        answer(u"installed successfully"_s);
        EXPECT_EQ(read(u"config/apps/parcel/main.wf"_s), first);
    }

    void runParcel()
    {
        bringUpLauncher();
        clearEntry();
        hands->type(u"parcel"_s);
        ASSERT_TRUE(lists(u"frmSet/List2"_s, {u"parcel"_s}));
        hands->key(u"Return"_s);
    }

    // With the keyboard: the line has other links, too.
    void followFooterLink()
    {
        bringUpLauncher();
        QStringList passed;
        while (!hasFocus(u"frmSet/hint"_s) && passed.size() < 30) {
            const QString before = focused();
            passed += before;
            hands->key(u"Tab"_s);
            ASSERT_TRUE(eventually([&] { return focused() != before; })) << before.toStdString();
        }
        ASSERT_TRUE(hasFocus(u"frmSet/hint"_s)) << passed.join(u' ').toStdString();
        for (qsizetype links = textOf(u"frmSet/hint"_s).count(u"<a href"_s); links > 1; --links)
            hands->key(u"Tab"_s);
        hands->key(u"Return"_s);
    }

    const QByteArray first = "os.set_clipboard \"one\"\r\nos.tips \"done\"\r\n";
    const QByteArray second
        = "os.get_clipboard \"before\"\r\nos.set_clipboard \"two\"\r\nos.tips set.before\r\n";
};

} // namespace

TEST_F(SignedStorePath, anAppIsAskedAboutWithVersionSizeAndSheetAndRunsUnderIt)
{
    follow(u"parcel"_s);
    const QString size = QLocale::c().formattedDataSize(
        shop->packageSize(u"parcel"_s), 1, QLocale::DataSizeTraditionalFormat);
    EXPECT_EQ(textOf(u"asks/facts"_s), u"Version 1, "_s + size);
    EXPECT_EQ(textOf(u"asks/sheet"_s), u"Puts text on the clipboard.\nContacts nobody."_s);
    EXPECT_FALSE(isShown(u"asks/unsigned"_s));
    EXPECT_FALSE(QFile::exists(programFolder() + u"/parcel.wfp.dl"_s));
    agreeToInstall(u"parcel"_s);
    answer(u"installed successfully"_s);
    EXPECT_EQ(read(u"config/apps/parcel/main.wf"_s), first);
    EXPECT_TRUE(read(u"config/load/grants.json"_s).contains("\"parcel\""));

    runParcel();
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    EXPECT_TRUE(eventually([&] { return clipboardText() == "one"; }));
    EXPECT_FALSE(isShown(u"asks/asks"_s));
    EXPECT_FALSE(textOf(u"frmSet/hint"_s).contains(u"not allowed"_s));
}

TEST_F(SignedStorePath, anUpdateIsFoundAndAsksForWhatIsNewAlone)
{
    installParcel();
    shop->addApp(u"parcel"_s, second);
    ASSERT_TRUE(shop->publish());
    followAndCancel(u"hello"_s);
    ASSERT_TRUE(eventually([&] { return textOf(u"frmSet/hint"_s).contains(u"1 update"_s); }));
    followFooterLink();
    ASSERT_TRUE(appears(u"asks/asks"_s));
    EXPECT_TRUE(textOf(u"asks/facts"_s).startsWith(u"Version 2, "_s));
    EXPECT_EQ(textOf(u"asks/sheet"_s), u"It could not do this before:\nReads the text on the clipboard."_s);
    agreeToInstall(u"parcel"_s);
    EXPECT_TRUE(eventually([&] { return read(u"config/apps/parcel/main.wf"_s) == second; }));
    EXPECT_TRUE(eventually([&] { return !textOf(u"frmSet/hint"_s).contains(u"1 update<"_s); }));
}

TEST_F(SignedStorePath, anAppThatWasTakenBackIsRefusedAtItsStart)
{
    installParcel();
    ASSERT_TRUE(shop->takeBack(u"parcel"_s, u"It shows the wrong line."_s));
    ASSERT_TRUE(shop->publish());
    followAndCancel(u"hello"_s);
    runParcel();
    answer(u"The store has taken this version of \"parcel\" back."_s, u"No"_s);
    // Until the user insists.
    runParcel();
    EXPECT_FALSE(isShown(u"shurubox/shurubox"_s));
    answer(u"The store has taken this version of \"parcel\" back."_s, u"Yes"_s);
    ASSERT_TRUE(appears(u"shurubox/tipsbox"_s));
    EXPECT_TRUE(eventually([&] { return clipboardText() == "one"; }));
}

} // namespace plum
