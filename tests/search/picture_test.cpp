#include "search/picture_cache.h"
#include "search/picture_file.h"
#include "search/picture_template.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

namespace {

constexpr Channels tolerance{88, 221, 255};

QByteArray saved(const QImage &image, const char *format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format, 100)) << format;
    return buffer.data();
}

QImage twoColours()
{
    QImage image(5, 3, QImage::Format_RGB32);
    image.fill(QColor(10, 20, 30));
    image.setPixelColor(4, 2, QColor(200, 100, 50));
    return image;
}

// A picture from text, a row a string: "." is the background, "#" differs in all channels, "r" in red alone.
Picture drawn(const QList<QByteArray> &rows, quint32 background = 0x808080)
{
    Picture picture{static_cast<int>(rows.front().size()), static_cast<int>(rows.size()), {}};
    for (const QByteArray &row : rows) {
        for (const char c : row)
            picture.pixels.push_back(c == '#' ? 0x102030u : c == 'r' ? background ^ 0xff0000 : background);
    }
    return picture;
}

std::array<int, 4> boxOf(const Picture &picture)
{
    const PictureTemplate made(picture, tolerance);
    return {made.left(), made.top(), made.right(), made.bottom()};
}

using Box = std::array<int, 4>;

// A PNG file that claims a size and holds one pixel.
QByteArray enormousPng(int width, int height)
{
    QByteArray bytes = saved(QImage(1, 1, QImage::Format_RGB32), "png");
    const auto put = [&](int at, int value) {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<char>(value >> (24 - 8 * i));
    };
    put(16, width);
    put(20, height);
    quint32 crc = 0xffffffff;
    for (int i = 12; i < 29; ++i) {
        crc ^= static_cast<quint8>(bytes[i]);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    put(29, static_cast<int>(~crc));
    return bytes;
}

} // namespace

TEST(PictureFile, ReadsEveryFormat)
{
    for (const char *format : {"bmp", "png", "ico"}) {
        const auto picture = decodePicture(saved(twoColours(), format));
        ASSERT_TRUE(picture) << format;
        EXPECT_EQ(picture->width, 5) << format;
        EXPECT_EQ(picture->height, 3) << format;
        EXPECT_EQ(picture->at(0, 0), 0x0a141eu) << format;
        EXPECT_EQ(picture->at(4, 2), 0xc86432u) << format;
    }
    const auto jpeg = decodePicture(saved(twoColours(), "jpg"));
    ASSERT_TRUE(jpeg);
    EXPECT_EQ(jpeg->width, 5);
    // One white pixel.
    const auto gif = decodePicture(QByteArray::fromHex("474946383961010001008000"
                                                       "00ffffff000000"
                                                       "2c00000000010001000002024401003b"));
    ASSERT_TRUE(gif);
    EXPECT_EQ(gif->pixels, std::vector<quint32>{0xffffff});
}

TEST(PictureFile, ContentDecidesNotTheName)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"picture.bmp"_s);
    ASSERT_TRUE(twoColours().save(path, "png"));
    EXPECT_TRUE(readPicture(path));
}

TEST(PictureFile, TransparencyLiesOverBlack)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(200, 100, 50, 0));
    image.setPixelColor(1, 0, QColor(200, 100, 50, 255));
    const auto picture = decodePicture(saved(image, "png"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->at(0, 0), 0u);
    EXPECT_EQ(picture->at(1, 0), 0xc86432u);
}

TEST(PictureFile, OtherContentIsNoPicture)
{
    EXPECT_FALSE(decodePicture({}));
    EXPECT_FALSE(decodePicture("plain text"));
    EXPECT_FALSE(decodePicture("<svg xmlns='http://www.w3.org/2000/svg' width='5' height='5'/>"));
    EXPECT_FALSE(decodePicture(saved(twoColours(), "ppm")));
    EXPECT_FALSE(readPicture(u"/no/such/file.png"_s));
    QTemporaryDir folder;
    EXPECT_FALSE(readPicture(folder.path()));
}

TEST(PictureFile, TruncatedFilesNeverCrash)
{
    QImage image(64, 48, QImage::Format_RGB32);
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 64; ++x)
            image.setPixelColor(x, y, QColor((x * 37) & 255, (y * 91) & 255, (x * y) & 255));
    }
    for (const char *format : {"bmp", "png", "ico", "jpg"}) {
        const QByteArray whole = saved(image, format);
        for (qsizetype length = 0; length < whole.size(); length += 1 + whole.size() / 97) {
            const auto picture = decodePicture(whole.first(length));
            if (picture) {
                EXPECT_EQ(picture->pixels.size(), 64u * 48u) << format << " " << length;
            }
        }
    }
}

TEST(PictureFile, EnormousPicturesAreRefusedByTheirHeader)
{
    EXPECT_FALSE(decodePicture(enormousPng(30000, 30000)));
    EXPECT_FALSE(decodePicture(enormousPng(40000, 2)));
    EXPECT_FALSE(decodePicture(enormousPng(2147483647, 2147483647)));
    // The same bytes with the true size are a picture: it is the claim that is refused.
    EXPECT_TRUE(decodePicture(enormousPng(1, 1)));
}

TEST(PictureTemplate, TrimsToTheForeground)
{
    EXPECT_EQ(boxOf(drawn({"........", "........", "..####..", "..####..", "........", "........"})),
        (Box{2, 2, 5, 3}));
}

TEST(PictureTemplate, LeftIsTheColumnOfTheFirstForegroundPixelNotTheLeftmost)
{
    EXPECT_EQ(boxOf(drawn({"......", "..#...", ".###..", "......"})), (Box{2, 1, 3, 2}));
}

TEST(PictureTemplate, BottomIsFoundOnlyFromTheLeftEdgeOn)
{
    EXPECT_EQ(boxOf(drawn({"........", "....##..", ".###....", "........"})), (Box{4, 1, 0, 1}));
}

TEST(PictureTemplate, RightEdgeIsSearchedWithCrossedBounds)
{
    // Rows are searched down to the number of the left edge: the wide row 1 lies above it.
    EXPECT_EQ(
        boxOf(drawn({"..........", "...######.", "..........", "...##.....", "..........", ".........."})),
        (Box{3, 1, 4, 3}));
    // Columns are searched down to the number of the top edge: what lies left of it is not seen.
    EXPECT_EQ(boxOf(drawn({"......", "......", "......", "......", ".##...", ".##...", "......"})),
        (Box{1, 4, 0, 5}));
}

TEST(PictureTemplate, ForegroundDiffersInEveryChannel)
{
    EXPECT_EQ(boxOf(drawn({".....", ".rrr.", "..#..", "....."})), (Box{2, 2, 2, 2}));
}

TEST(PictureTemplate, CornersThatDifferKeepThePictureWhole)
{
    EXPECT_EQ(boxOf(drawn({"....#", ".###.", "....."})), (Box{0, 0, 5, 3}));
    EXPECT_EQ(boxOf(drawn({".....", ".###.", "r...."})), (Box{0, 0, 5, 3}));
}

TEST(PictureTemplate, PictureOfOneColourComparesNothing)
{
    const PictureTemplate made(drawn({"...", "..."}), tolerance);
    EXPECT_EQ(boxOf(drawn({"...", "..."})), (Box{0, 0, 0, 0}));
    EXPECT_LE(made.comparedWidth(), 0);
    EXPECT_EQ(boxOf(drawn({"."})), (Box{0, 0, 0, 0}));
}

TEST(PictureTemplate, TransparentComparisonHasNoUpperBoundWhereTheBackgroundShowsThrough)
{
    // Red and green of the background are equal: transparent. Its own pixels then have no upper bound.
    const QList<QByteArray> rows{"......", ".#####", ".#.###", ".#####", ".#####", ".#####"};
    QList<QByteArray> framed = rows;
    for (QByteArray &row : framed)
        row += '.';
    framed += ".......";
    const PictureTemplate transparent(drawn(framed), tolerance);
    ASSERT_EQ(transparent.left(), 1);
    const std::size_t hole = transparent.stride() + 1; // column 2, row 2
    EXPECT_EQ(transparent.bounds(2).low[hole], 0x80 - 88);
    EXPECT_EQ(transparent.bounds(2).low[hole] + transparent.bounds(2).span[hole], 255);
    // Red differs from green and blue is 0: plain.
    const PictureTemplate plain(drawn(framed, 0x808100), tolerance);
    EXPECT_EQ(plain.bounds(2).low[hole] + plain.bounds(2).span[hole], 0x80 + 88);
}

TEST(PictureTemplate, BlueIsNeverComparedWithThePicturesTolerance)
{
    const PictureTemplate made(drawn({"#..", "...", "..."}), tolerance);
    EXPECT_TRUE(made.bounds(0).isEmpty());
    EXPECT_FALSE(made.bounds(2).isEmpty());
}

namespace {

class PictureCacheTest : public testing::Test
{
protected:
    QString write(const QString &name, int size, const QDateTime &changed)
    {
        const QString path = folder.filePath(name);
        QImage image(size, 8, QImage::Format_RGB32);
        image.fill(Qt::black);
        image.setPixelColor(0, 0, Qt::white);
        EXPECT_TRUE(image.save(path, "bmp"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_TRUE(file.setFileTime(changed, QFileDevice::FileModificationTime));
        return path;
    }

    QTemporaryDir folder;
    PictureCache cache;
    QDateTime longAgo = QDateTime::currentDateTime().addDays(-1);
};

} // namespace

TEST_F(PictureCacheTest, KeepsAPictureWhileItsFileStaysTheSame)
{
    const QString path = write(u"a.bmp"_s, 8, longAgo);
    const auto first = cache.prepared(path, tolerance);
    EXPECT_EQ(cache.prepared(path, tolerance), first);
    EXPECT_NE(cache.prepared(path, {1, 2, 3}), first);
    write(u"a.bmp"_s, 8, longAgo.addSecs(1));
    EXPECT_NE(cache.prepared(path, tolerance), first);
}

TEST_F(PictureCacheTest, NoticesAnotherSizeUnderTheSameTime)
{
    const QString path = write(u"a.bmp"_s, 8, longAgo);
    EXPECT_EQ(cache.prepared(path, tolerance)->right(), 8);
    write(u"a.bmp"_s, 16, longAgo);
    EXPECT_EQ(cache.prepared(path, tolerance)->right(), 16);
}

TEST_F(PictureCacheTest, DoesNotTrustAFileThatChangedJustNow)
{
    const QString path = write(u"a.bmp"_s, 8, QDateTime::currentDateTime());
    EXPECT_TRUE(cache.prepared(path, tolerance));
    EXPECT_EQ(cache.size(), 0u);
}

TEST_F(PictureCacheTest, IsBounded)
{
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(cache.prepared(write(u"%1.bmp"_s.arg(i), 8, longAgo), tolerance));
    EXPECT_EQ(cache.size(), PictureCache::maxEntries);
}

TEST_F(PictureCacheTest, ForgetsAFileThatIsNoPictureAnyMore)
{
    const QString path = write(u"a.bmp"_s, 8, longAgo);
    EXPECT_TRUE(cache.prepared(path, tolerance));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("text");
    file.close();
    EXPECT_FALSE(cache.prepared(path, tolerance));
    EXPECT_EQ(cache.size(), 0u);
}
