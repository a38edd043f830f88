#include "contract/real_desktop.h"

#include <array>

namespace plum::contract {

namespace {

constexpr std::array table{
    Exception{"ClipboardOfAll.tellsThatOthersHaveTakenItsText",
        "the system hands the text out and tells nobody, so the old one is back after a tenth of a second"},
    Exception{"KeyboardPort.typesTextsOfAnyCharacters",
        "Under Wine not every character arrives: the emoji of the test does not."},
    Exception{"WindowsPort.aHiddenWindowHasNoTitleToBeFoundBy",
        "The system finds a hidden window by its title too."},
    Exception{"WindowsPort.tellsOfTheEndOfAWindow", "Plum looks for the window itself, 20 times a second."},
    Exception{"WindowsPort.movingAHiddenWindowLeavesItHidden",
        "Windows gives a hidden window that is moved the keyboard, and does not show it."},
    Exception{"WindowsOnScreen.noneIsUnderThePointerOverTheBareDesktop",
        "Over the bare desktop the system names the desktop's own window."},
    Exception{"WindowsOnScreen.minimisedIsRestoredByActivating",
        "Windows gives a minimised window the keyboard and leaves it minimised."},
    Exception{"WindowsOnScreen.maximisedIsMovedWithItsSize",
        "Under Wine a maximised window does not always hear that it was moved."},
    Exception{"WindowsOnScreen.isUnderThePointerWithItsTitleBar",
        "Under Wine the title bar is the window manager's and nobody's for the pointer."},
};

// The desktop on which the tests were started, Wine's or Windows' own.
class WindowsDesktop final : public RealDesktop
{
public:
    const char *name() const override { return "Windows"; }
    bool prepare() override { return true; }
    std::span<const Exception> exceptions() const override { return table; }
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<WindowsDesktop>();
}

} // namespace plum::contract
