// Bytes as a picture file: decoded, made ready, and looked for on a small screen.
#include "search/find_pic_scan.h"
#include "search/picture_file.h"
#include "search/pixel_kernels.h"

#include <QLoggingCategory>

#include <array>

namespace {

constexpr int screenWidth = 61;
constexpr int screenHeight = 23;

std::array<quint32, screenWidth * screenHeight> patternedScreen()
{
    std::array<quint32, screenWidth * screenHeight> pixels{};
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = i % 7 < 3 ? 0x000000 : i % 5 == 0 ? 0xff8000 : 0x80c0ff;
    return pixels;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    // The decoders report every damaged file on standard error.
    static const bool silent = (QLoggingCategory::setFilterRules(QStringLiteral("*=false")), true);
    static const auto screen = patternedScreen();
    static plum::FindPicScan scan(plum::pixelKernels());
    Q_UNUSED(silent)

    const auto picture = plum::decodePicture(
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    if (!picture)
        return 0;
    const plum::PictureTemplate made(*picture, {88, 221, 255});
    // Inside the screen, and with black around it.
    const plum::Capture capture{QSize(screenWidth, screenHeight), screen};
    scan.find({screenWidth, screenHeight, {0, 0}, capture}, made);
    scan.find({qint64(1) << 31, qint64(1) << 31, {1000, 40000}, capture}, made);
    return 0;
}
