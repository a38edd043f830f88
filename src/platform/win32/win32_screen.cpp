#include "platform/win32/win32_screen.h"

#include <memory>
#include <qt_windows.h>

namespace plum {

namespace {

constexpr qint64 maxPixels = qint64(1) << 28;

struct ReleaseScreen
{
    void operator()(HDC context) const { ReleaseDC(nullptr, context); }
};
using ScreenContext = std::unique_ptr<std::remove_pointer_t<HDC>, ReleaseScreen>;

struct DeleteContext
{
    void operator()(HDC context) const { DeleteDC(context); }
};
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

struct DeleteBitmap
{
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;

// Copies a part of the screen into a bitmap of its own by a raster operation; what the desktop does not have
// is black. Only what it has is asked for: Wine copies nothing from the left of the screen.
Bitmap copyOfScreen(HDC screen, const QRect &region, const QRect &desktop, DWORD operation)
{
    const MemoryContext memory(CreateCompatibleDC(screen));
    Bitmap bitmap(CreateCompatibleBitmap(screen, region.width(), region.height()));
    if (!memory || !bitmap)
        return {};
    const HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
    PatBlt(memory.get(), 0, 0, region.width(), region.height(), BLACKNESS);
    const QRect part = region & desktop;
    const QPoint to = part.topLeft() - region.topLeft();
    const bool isCopied = part.isEmpty()
        || BitBlt(
            memory.get(), to.x(), to.y(), part.width(), part.height(), screen, part.x(), part.y(), operation);
    SelectObject(memory.get(), before);
    return isCopied ? std::move(bitmap) : Bitmap();
}

} // namespace

QSize Win32Screen::mainScreenSize()
{
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

QRect Win32Screen::desktop()
{
    return {GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN),
        GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

Capture Win32Screen::capture(const QRect &region)
{
    return captureBy(SRCCOPY | CAPTUREBLT, region);
}

Capture Win32Screen::capturePlainly(const QRect &region)
{
    return captureBy(SRCCOPY, region);
}

Capture Win32Screen::captureBy(quint32 operation, const QRect &region)
{
    if (region.isEmpty() || qint64(region.width()) * region.height() > maxPixels)
        return {};
    const ScreenContext screen(GetDC(nullptr));
    const Bitmap bitmap = screen ? copyOfScreen(screen.get(), region, desktop(), operation) : Bitmap();
    if (!bitmap)
        return {};

    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = region.width();
    format.bmiHeader.biHeight = -region.height(); // rows from the top
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    m_pixels.resize(static_cast<std::size_t>(region.width()) * static_cast<std::size_t>(region.height()));
    const auto rows = static_cast<UINT>(region.height());
    if (GetDIBits(screen.get(), bitmap.get(), 0, rows, m_pixels.data(), &format, DIB_RGB_COLORS)
        != region.height())
        return {};
    return {region.size(), m_pixels};
}

} // namespace plum
