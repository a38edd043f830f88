#include "contract/contract_desktop.h"
#include "platform/recording/recording_platform.h"

#include <array>

namespace plum::contract {

namespace {

using recording::RecordingPlatform;

constexpr QSize screenSize(1280, 800);
constexpr int border = 3; // pixels, of every frame
constexpr int caption = 20;

// A window that the recording backend was told of, painted on its screen.
class ToldWindow final : public PeerWindow
{
public:
    ToldWindow(RecordingPlatform &platform, const QString &title, const QRect &inside)
        : m_windows(platform.windows())
        , m_title(title)
        , m_handle(static_cast<WindowHandle>(100 + m_windows.rectangles.size()))
    {
        m_windows.titles.insert(title, m_handle);
        m_windows.rectangles.insert(m_handle, inside.adjusted(-border, -caption, border, border));
        m_windows.foregroundWindow = m_handle;
        m_windows.order.insert(m_windows.order.begin(), m_handle);
        paint(platform.screen());
    }
    ~ToldWindow() override { kill(); }
    Q_DISABLE_COPY_MOVE(ToldWindow)

    WindowHandle handle() override { return m_handle; }
    QRect frame() override { return m_windows.rectangles.value(m_handle); }
    QRect inside() override { return frame().adjusted(border, caption, -border, -border); }
    QStringList seen(const QStringList &) override { return {}; }
    void forget() override { }
    void goOn() override { }

    void kill() override
    {
        m_windows.titles.remove(m_title);
        m_windows.rectangles.remove(m_handle);
        std::erase(m_windows.order, m_handle);
    }

private:
    void paint(recording::RecordingScreen &screen)
    {
        const QRect area = inside();
        const QRect square(0, 0, cornerSize, cornerSize);
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const QPoint fromTopLeft = QPoint(x, y) - area.topLeft();
                const QPoint fromBottomRight = area.bottomRight() - QPoint(x, y);
                screen.pixels[static_cast<size_t>(y * screenSize.width() + x)] = square.contains(fromTopLeft)
                    ? topLeftCorner
                    : square.contains(fromBottomRight) ? bottomRightCorner
                                                       : background;
            }
        }
    }

    recording::RecordingWindows &m_windows;
    QString m_title;
    WindowHandle m_handle;
};

constexpr const char *noPrograms
    = "No other program takes part; every call is written down and asserted in the tests of the commands.";
constexpr const char *noTime = "No real time passes: a timer is due when the test says so.";
constexpr const char *noFiles = "Paths are only rewritten; no file of the disk is looked up.";
constexpr const char *ownCodec
    = "Latin-1 stands in for GB2312, so that a test sees which encoding was asked for.";
constexpr const char *noEngine = "An evaluation gives the answer that the test has set.";

constexpr std::array table{
    Exception{"PointerEvents.*", noPrograms},
    Exception{"KeyboardPort.*", noPrograms},
    Exception{"WindowsOnScreen.*", noPrograms},
    Exception{"WindowsPort.tellsOf*", noPrograms},
    Exception{"ScreenPort.whatLiesOffTheDesktopIsBlack", noPrograms},
    Exception{"ClipboardOfAll.*", noPrograms},
    Exception{"HotkeyPressed.*", noPrograms},
    Exception{"ShellPort.*", noPrograms},
    Exception{"TimersInTime.*", noTime},
    Exception{"PathsPort.programFolderIsThatOfTheProgram", noFiles},
    Exception{"PathsPort.areFoundWhateverTheirLetterCase", noFiles},
    Exception{"PathsPort.thatDoNotExistStayAsWritten", noFiles},
    Exception{"TextCodecPort.readsGb2312WithTheExtensionsOfGbk", ownCodec},
    Exception{"JavaScriptPort.*", noEngine},
};

class RecordingDesktop final : public Desktop
{
public:
    const char *name() const override { return "recording"; }

    bool prepare() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return true;
    }

    std::unique_ptr<Platform> createPlatform() override
    {
        auto platform = std::make_unique<RecordingPlatform>();
        platform->screen().size = screenSize;
        platform->screen().pixels.assign(
            static_cast<size_t>(screenSize.width()) * static_cast<size_t>(screenSize.height()), 0x202020);
        platform->pointer().bounds = QRect(QPoint(), screenSize);
        return platform;
    }

    std::unique_ptr<PeerWindow> openWindow(
        Platform &platform, const QString &title, const QRect &inside) override
    {
        return std::make_unique<ToldWindow>(static_cast<RecordingPlatform &>(platform), title, inside);
    }

    std::unique_ptr<PeerProgram> start(const QStringList &) override { return nullptr; }

    std::span<const Exception> exceptions() const override { return table; }
};

} // namespace

std::unique_ptr<Desktop> Desktop::create()
{
    return std::make_unique<RecordingDesktop>();
}

} // namespace plum::contract
