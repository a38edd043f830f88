#include "guard/real_places.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

TEST(RealPath, followsLinksAndDots)
{
    const QTemporaryDir folder;
    const QString root = QDir(folder.path()).canonicalPath();
    QDir(root).mkpath(u"a/b"_s);
    QDir(root).mkpath(u"c"_s);
    ASSERT_TRUE(QFile::link(root + u"/a/b"_s, root + u"/c/link"_s));
    ASSERT_TRUE(QFile::link(root + u"/a/later"_s, root + u"/c/dangling"_s));
    ASSERT_TRUE(QFile::link(root + u"/c/round"_s, root + u"/c/round"_s));
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/link"_s), root + u"/a/b"_s);
    // What is above a link is above what it leads to.
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/link/../x"_s), root + u"/a/x"_s);
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/new/deep.txt"_s), root + u"/c/new/deep.txt"_s);
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/dangling/x"_s), root + u"/a/later/x"_s);
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/none/../x"_s), std::nullopt);
    EXPECT_EQ(RealPlaces::realPath(root + u"/c/round"_s), std::nullopt);
    EXPECT_EQ(RealPlaces::realPath(u"/no such file at the root"_s), u"/no such file at the root"_s);
}

} // namespace
} // namespace plum
