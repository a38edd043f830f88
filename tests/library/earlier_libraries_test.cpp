#include "library/library_bench.h"
#include "library/settings_file.h"
#include "library/single_instance.h"

#include <QDirIterator>

#include <gtest/gtest.h>

namespace plum {

using namespace Qt::StringLiterals;
using recording::bytesOf;
using recording::writeBytes;

namespace {

QString librariesFolder()
{
    return QStringLiteral(PLUM_EARLIER_LIBRARIES);
}

std::vector<std::string> versions()
{
    std::vector<std::string> names;
    for (const QString &name : QDir(librariesFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        names.push_back(name.toStdString());
    return names;
}

// A library as the version in the parameter left it, in a program folder of its own.
class EarlierLibrariesTest : public testing::TestWithParam<std::string>, protected recording::LibraryBench
{
protected:
    EarlierLibrariesTest()
    {
        const QString left = librariesFolder() + u'/' + QString::fromStdString(GetParam()) + u'/';
        QDirIterator files(left, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            writeBytes(folder.path() + u'/' + file.mid(left.size()), bytesOf(file));
        }
    }
};

} // namespace

TEST_P(EarlierLibrariesTest, theListKeepsItsOrder)
{
    load();
    EXPECT_EQ(lists.List.stringList(), QStringList({u"回到角落"_s, u"packed"_s, u"greet"_s}));
}

TEST_P(EarlierLibrariesTest, theHotkeyIsTheChosenOne)
{
    EXPECT_EQ(SettingsFile(paths, codec).ReadSetting(u"hotkey"_s, u"hotkey"_s), u"Ctrl+Q"_s);
}

TEST_P(EarlierLibrariesTest, everyScriptIsFound)
{
    load();
    for (const QString &keyword : lists.List.stringList()) {
        QStringList lines;
        LoadLinesIntoList(folders.file(folders.appScript(keyword)), lines, paths, codec);
        EXPECT_FALSE(lines.isEmpty()) << keyword.toStdString();
    }
}

TEST_P(EarlierLibrariesTest, aClaimThatWasLeftHoldsNobodyUp)
{
    EXPECT_TRUE(SingleInstance(folders).claim());
}

TEST_P(EarlierLibrariesTest, anUpdateTellsTheUsersFilesFromThePackages)
{
    const QString package
        = folder.addPackage(u"packed.wfp"_s, recording::packageOf({{u"main.wf"_s, "time.sleep \"2\"\r\n"}}));
    ASSERT_TRUE(installer.setAside(u"packed"_s));
    EXPECT_TRUE(
        installer.install({.path = package, .keyword = u"packed"_s, .carried = CarriedFiles::UsersOwn},
            [](const QString &) {}));
    EXPECT_EQ(bytesOf(folder.script(u"packed"_s)), "time.sleep \"2\"\r\n");
    EXPECT_EQ(bytesOf(folder.apps(u"packed/words.txt"_s)), "mine\n");
    EXPECT_FALSE(QFile::exists(folder.apps(u"packed/help.txt"_s)));
}

INSTANTIATE_TEST_SUITE_P(, EarlierLibrariesTest, testing::ValuesIn(versions()), [](const auto &each) {
    std::string name = "v" + each.param;
    std::ranges::replace(name, '.', '_');
    return name;
});

} // namespace plum
