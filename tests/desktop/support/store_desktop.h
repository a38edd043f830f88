#pragma once

#include "desktop/support/launcher_desktop.h"
#include "desktop/support/page_eyes.h"
#include "support/shop.h"

namespace plum {

// A desktop with the real launcher and a store on the address that the launcher was built for.
class StoreDesktop : public LauncherDesktop
{
protected:
    void SetUp() override;

    // The launcher's store window is there with a page that `condition`, a JavaScript expression, holds for.
    bool pageShows(const QString &condition);

    // Clicks into the middle of the first element that a CSS selector finds in the page.
    void clickInPage(const QString &selector);

    // Some window has this title.
    bool hasWindow(const QString &title) { return view->windowTitled(title.toUtf8()) != XCB_NONE; }

    // Waits until the dialog has the keyboard, and presses Enter.
    void agreeWithEnter();

    // Gives the launcher the keyboard, as a task bar does.
    void bringUpLauncher();

    std::optional<test::Shop> shop;

private:
    // Where the page's top left corner is on the screen.
    QPoint pageOrigin();

    std::optional<PageEyes> m_page;
};

} // namespace plum
