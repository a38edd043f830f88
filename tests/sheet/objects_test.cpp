// How paths, addresses and programs become objects of a sheet.
#include "sheet/objects.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace plum {
namespace {

using namespace Qt::StringLiterals;

QString file(const QString &path)
{
    return fileObject(path, ObjectForm::Resolved).value_or(u"anything"_s);
}

TEST(FileObject, namesFilesByWhereTheyAre)
{
    EXPECT_EQ(file(u"_pfold_\\a\\b.txt"_s), u"app:a/b.txt"_s);
    EXPECT_EQ(file(u"_ppfold_/a.txt"_s), u"app:a.txt"_s);
    EXPECT_EQ(file(u"a.txt"_s), u"program:a.txt"_s);
    EXPECT_EQ(file(u"C:\\x\\..\\y.txt"_s), u"file:C:/y.txt"_s);
    EXPECT_EQ(file(appFolderText + u"/./x/../y"_s), u"app:y"_s);
    EXPECT_EQ(file(appFolderText + u"2/y"_s), u"anything"_s);
    EXPECT_EQ(file(desktopText + u"/../.bashrc"_s), u"anything"_s);
    EXPECT_EQ(fileObject(u"_pfold_/x"_s, ObjectForm::AsWritten), u"program:_pfold_/x"_s);
    EXPECT_EQ(fileObject({}, ObjectForm::Folder), u"program:config/module/download/tmp/"_s);
}

TEST(FileObject, ofAnUnknownPartIsTheFolderAbove)
{
    EXPECT_EQ(file(u"/home/me/"_s + anyText + u".txt"_s), u"file:/home/me/"_s);
    EXPECT_EQ(file(u"/"_s + anyText), u"anything"_s);
    EXPECT_EQ(file(u"C:/"_s + anyText), u"anything"_s);
    EXPECT_EQ(file(u"x"_s + anyText), u"anything"_s);
    EXPECT_EQ(file(u"_pfold_/"_s + anyText), u"app:"_s);
}

TEST(HostObject, isTheServerOrNothing)
{
    EXPECT_EQ(hostObject(u"http://Example.org:8080/x"_s), u"host:example.org"_s);
    EXPECT_EQ(hostObject(u"example.org/x"_s), u"host:example.org"_s);
    EXPECT_EQ(hostObject(u"http://[::1]/"_s), u"host:[::1]"_s);
    for (const QString &address :
        {u"http://a@b/"_s, u"http://a\\@b/"_s, u"file:///etc/passwd"_s, u"http://"_s + anyText,
            u"http://a"_s + anyText, u"//a/b"_s, u"javascript:1"_s, u"http://a%2eb/"_s})
        EXPECT_EQ(hostObject(address), std::nullopt) << address.toStdString();
}

TEST(Covering, leavesOutWhatIsNamedApart)
{
    const Scope anything{.anything = true};
    EXPECT_TRUE(covers(Effect::WriteFile, anything, u"file:/x"_s));
    EXPECT_TRUE(covers(Effect::WriteFile, anything, u"app:x.txt"_s));
    EXPECT_FALSE(covers(Effect::WriteFile, anything, u"app:main.wf"_s));
    EXPECT_TRUE(covers(Effect::ReadFile, anything, u"app:main.wf"_s));
    EXPECT_FALSE(covers(Effect::ReadFile, anything, u"apps:note/notes.txt"_s));
    EXPECT_FALSE(covers(Effect::ReadFile, anything, u"program:config/load/set.ini"_s));
    const Scope folder{.objects = {u"app:"_s}};
    EXPECT_TRUE(covers(Effect::WriteFile, folder, u"app:deep/x.txt"_s));
    EXPECT_FALSE(covers(Effect::WriteFile, folder, u"app:Main.WF"_s));
    EXPECT_FALSE(covers(Effect::WriteFile, folder, u"apps:x"_s));
}

} // namespace
} // namespace plum
