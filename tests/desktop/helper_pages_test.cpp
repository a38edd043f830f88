#include "desktop/support/store_desktop.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Helper programs that answer their start with a page through the clipboard.
class HelperPages : public StoreDesktop
{
protected:
    void SetUp() override
    {
        StoreDesktop::SetUp();
        for (const QString &path :
            {u"config/module/net/browser/browser.exe"_s, u"config/module/download/download.exe"_s})
            writeHelper(path);
    }

    void writeHelper(const QString &path)
    {
        write(path,
            "#!/bin/sh\nprintf '##tarnwick:send##<title>helper</title><p>%s</p>' \"$1\""
            " | xclip -i -selection clipboard\n");
        QFile::setPermissions(
            programFolder() + u'/' + path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void runApp(const QString &keyword)
    {
        bringUpLauncher();
        clearEntry();
        hands->type(keyword);
        ASSERT_TRUE(lists(u"frmSet/List2"_s, {keyword}));
        hands->key(u"Return"_s);
    }

    // The store window has the keyboard and that text in its page.
    bool storeShows(const QString &text)
    {
        return pageShows(u"document.hasFocus() && document.body.innerText.includes('%1')"_s.arg(text))
            && eventually([&] { return clipboardText().isEmpty() && !hasFocus(u"frmSet/Text8"_s); });
    }
};

} // namespace

TEST_F(HelperPages, theStoreWindowShowsThePageOfEveryHelperThatAScriptStarts)
{
    writeApp(u"webhtml"_s, {u"webbox.html \"from webbox\",\"t\""_s});
    writeApp(u"print"_s, {u"print.html \"from print\",\"t\""_s});
    writeApp(u"load"_s, {u"net.download \"http://127.0.0.1/from-download\",\"/tmp\",\"f\",\"t\""_s});
    startLauncher();
    // Each page says that it is the last one, so each start has to switch the channel on again.
    runApp(u"webhtml"_s);
    EXPECT_TRUE(storeShows(u"_tarnwick_html_|||from webbox|||t"_s));
    runApp(u"print"_s);
    EXPECT_TRUE(storeShows(u"from print|||t"_s));
    runApp(u"load"_s);
    EXPECT_TRUE(storeShows(u"http://127.0.0.1/from-download@@@/tmp@@@f@@@t"_s));
}

TEST_F(HelperPages, aPageThatNobodyAskedForStaysOnTheClipboardUntilAHelperStarts)
{
    writeApp(u"webhtml"_s, {u"webbox.html \"asked for\",\"t\""_s});
    writeApp(u"note"_s, {u"set.word \"noted\""_s, resultLine(u"\"word\""_s)});
    startLauncher();
    runApp(u"webhtml"_s);
    ASSERT_TRUE(storeShows(u"asked for"_s));

    outputOf(u"sh"_s, {u"-c"_s, u"printf '##tarnwick:send##late' | xclip -i -selection clipboard"_s});
    runApp(u"note"_s);
    ASSERT_TRUE(eventually([&] { return results() == "noted\r\n"; }));
    EXPECT_EQ(clipboardText(), "##tarnwick:send##late");
    EXPECT_TRUE(pageShows(u"document.body.innerText.includes('asked for')"_s));
}

TEST_F(HelperPages, closingTheWindowRefusesPagesUntilTheNextHelper)
{
    writeApp(u"webhtml"_s, {u"webbox.html \"first\",\"t\""_s});
    writeApp(u"again"_s, {u"webbox.html \"second\",\"t\""_s});
    startLauncher();
    runApp(u"webhtml"_s);
    ASSERT_TRUE(storeShows(u"first"_s));
    hands->key(u"Escape"_s);
    ASSERT_TRUE(pageShows(u"location.href == 'about:blank' && document.body.innerText == ''"_s));
    runApp(u"again"_s);
    EXPECT_TRUE(storeShows(u"second"_s));
}

} // namespace plum
