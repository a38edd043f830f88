#include "platform/desktop_windows.h"
#include "platform/platform.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace plum {

using test::waitUntil;

namespace {

// What this system alone has: controls that are windows, and windows that stay icons with the keyboard.
class WindowsOfWindows : public testing::Test
{
protected:
    void SetUp() override
    {
        outer = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"outer", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100,
            100, 300, 200, nullptr, nullptr, nullptr, nullptr);
        inner = CreateWindowExW(
            0, L"BUTTON", L"inner", WS_CHILD | WS_VISIBLE, 50, 50, 100, 40, outer, nullptr, nullptr, nullptr);
        ASSERT_NE(inner, nullptr);
    }
    void TearDown() override { DestroyWindow(outer); }

    static WindowHandle handle(HWND window)
    {
        return static_cast<WindowHandle>(reinterpret_cast<qintptr>(window));
    }

    std::unique_ptr<Platform> platform = createPlatform({});
    HWND outer = nullptr;
    HWND inner = nullptr;
};

} // namespace

TEST_F(WindowsOfWindows, aControlUnderThePointerIsTheWindow)
{
    RECT control{};
    GetWindowRect(inner, &control);
    SetCursorPos((control.left + control.right) / 2, (control.top + control.bottom) / 2);
    EXPECT_TRUE(waitUntil([this] { return platform->windows().underPointer() == handle(inner); }));
}

TEST_F(WindowsOfWindows, activatingLeavesAnIconAnIcon)
{
    ShowWindow(outer, SW_MINIMIZE);
    ASSERT_TRUE(waitUntil([this] { return IsIconic(outer) != 0; }));
    platform->windows().activate(handle(outer));
    EXPECT_TRUE(IsIconic(outer));
}

} // namespace plum
