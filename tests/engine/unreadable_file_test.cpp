// A file that this user may not read.

#include "engine/text_files.h"
#include "platform/recording/recording_platform.h"
#include "support/plain_user.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum;

TEST(UnreadableFile, LeavesTheList)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"script.wf"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a\r\n");
    file.close();
    // Another user than the owner passes through the folder.
    ASSERT_TRUE(QFile::setPermissions(
        folder.path(), QFile::permissions(folder.path()) | QFile::ExeGroup | QFile::ExeOther));
    recording::RecordingPaths paths;
    recording::RecordingTextCodec codec;
    const TextFiles files{paths, codec};
    QStringList lines{u"before"_s};
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    {
        const test::PlainUser user;
        EXPECT_FALSE(files.appendLines(path, lines));
    }
    EXPECT_EQ(lines, QStringList{u"before"_s});
    // It was the permission.
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOther | QFile::ReadGroup | QFile::ReadOwner));
    const test::PlainUser user;
    EXPECT_TRUE(files.appendLines(path, lines));
    EXPECT_EQ(lines, (QStringList{u"before"_s, u"a"_s}));
}
