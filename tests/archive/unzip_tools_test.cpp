#include "archive/unzip_bench.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace plum::testing;

namespace {

// A way to make an archive of everything in the working folder.
struct Tool
{
    const char *name;
    QStringList command; // the archive's path stands for "%1"
};

void PrintTo(const Tool &tool, std::ostream *out)
{
    *out << tool.name;
}

QByteArray prose(qsizetype size)
{
    QRandomGenerator random(5);
    QByteArray bytes;
    while (bytes.size() < size) {
        bytes += QByteArray::number(random.bounded(1000));
        bytes += random.bounded(9) == 0 ? ".\r\n" : " and then ";
    }
    return bytes;
}

QByteArray noise(qsizetype size)
{
    QRandomGenerator random(6);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.generate());
    return bytes;
}

const QMap<QString, QByteArray> &sample()
{
    static const QMap<QString, QByteArray> files{
        {u"main.wf"_s, "//guide:sample\r\nmouse.click \"1:2\"\r\n"},
        {u"empty"_s, ""},
        {u"prose.txt"_s, prose(700000)},
        {u"noise.bin"_s, noise(300000)},
        {u"zeros.bin"_s, QByteArray(500000, '\0')},
        {u"pictures/deep/far.bin"_s, noise(60000) + prose(50000) + noise(60000)},
        {u"名字.txt"_s, "a name"},
    };
    return files;
}

// An even second in winter and one in summer.
const QList<QDateTime> sampleTimes{
    QDateTime(QDate(2019, 1, 2), QTime(3, 4, 6)), QDateTime(QDate(2022, 7, 31), QTime(23, 59, 58))};

class UnzipTools : public testing::TestWithParam<Tool>
{
};

} // namespace

TEST_P(UnzipTools, UnpackToWhatWasPacked)
{
    const Tool &tool = GetParam();
    if (QStandardPaths::findExecutable(tool.command[0]).isEmpty())
        GTEST_SKIP() << tool.command[0].toStdString() << " is not installed";

    UnzipBench bench;
    QDir source(bench.folder.filePath(u"source"_s));
    ASSERT_TRUE(source.mkpath(u"hollow/inside"_s));
    qsizetype index = 0;
    for (const auto &[name, content] : sample().asKeyValueRange()) {
        ASSERT_TRUE(source.mkpath(QFileInfo(name).path()));
        QFile file(source.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.flush();
        file.setFileTime(sampleTimes[index++ % 2], QFile::FileModificationTime);
    }

    QProcess process;
    process.setWorkingDirectory(source.path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    process.setProcessEnvironment(environment);
    QStringList arguments = tool.command.sliced(1);
    arguments.replaceInStrings(u"%1"_s, bench.folder.filePath(u"a.wfp"_s));
    process.start(tool.command[0], arguments);
    ASSERT_TRUE(process.waitForFinished(60000));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();

    ASSERT_TRUE(bench.reader.Init(bench.archivePath())) << bench.errors.join(u' ').toStdString();
    ASSERT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, QStringList());
    index = 0;
    for (const auto &[name, content] : sample().asKeyValueRange()) {
        EXPECT_TRUE(bench.content(name) == content) << name.toStdString();
        EXPECT_EQ(QFileInfo(bench.systemTarget() + u'/' + name).lastModified(), sampleTimes[index++ % 2])
            << name.toStdString();
    }
    EXPECT_TRUE(QFileInfo(bench.systemTarget() + u"/hollow/inside"_s).isDir());
}

TEST(UnzipTool, ReadsWhatInfoZipMakesOfItsStandardInput)
{
    UnzipBench bench;
    QProcess process;
    process.start(u"sh"_s, {u"-c"_s, u"echo hi | zip -q '%1' -"_s.arg(bench.folder.filePath(u"a.wfp"_s))});
    ASSERT_TRUE(process.waitForFinished(60000) && process.exitCode() == 0);
    ASSERT_TRUE(bench.reader.Init(bench.archivePath())) << bench.errors.join(u' ').toStdString();
    ASSERT_TRUE(bench.reader.unzip(bench.targetPath()));
    EXPECT_EQ(bench.errors, QStringList());
    EXPECT_EQ(bench.content(u"-"_s), "hi\n");
}

INSTANTIATE_TEST_SUITE_P(All, UnzipTools,
    testing::Values(Tool{"InfoZip", {u"zip"_s, u"-q"_s, u"-r"_s, u"%1"_s, u"."_s}},
        Tool{"InfoZipStored", {u"zip"_s, u"-q"_s, u"-r"_s, u"-0"_s, u"%1"_s, u"."_s}},
        Tool{"SevenZipDeflate",
            {u"7z"_s, u"a"_s, u"-tzip"_s, u"-mm=Deflate"_s, u"-mx=9"_s, u"-bd"_s, u"%1"_s, u"."_s}},
        Tool{"SevenZipDeflate64",
            {u"7z"_s, u"a"_s, u"-tzip"_s, u"-mm=Deflate64"_s, u"-mx=9"_s, u"-bd"_s, u"%1"_s, u"."_s}},
        Tool{"Bsdtar", {u"bsdtar"_s, u"--format"_s, u"zip"_s, u"-cf"_s, u"%1"_s, u"."_s}},
        Tool{"InfoZipToAPipe", {u"sh"_s, u"-c"_s, u"zip -q -r - . | cat > '%1'"_s}},
        Tool{"BsdtarToAPipe", {u"sh"_s, u"-c"_s, u"bsdtar --format zip -cf - . | cat > '%1'"_s}},
        Tool{"BsdtarToAPipeWithAComment",
            {u"sh"_s, u"-c"_s,
                u"bsdtar --format zip -cf - . | cat > '%1' && python3 -c 'import zipfile; "
                "archive = zipfile.ZipFile(\"%1\", \"a\"); archive.comment = b\"what it is\"; archive.close()'"_s}},
        Tool{"PythonZipfile",
            {u"python3"_s, u"-c"_s,
                u"import shutil, os; os.rename(shutil.make_archive('%1', 'zip', '.'), '%1')"_s}},
        Tool{"JavaJar", {u"jar"_s, u"cMf"_s, u"%1"_s, u"-C"_s, u"."_s, u"."_s}}),
    [](const auto &instance) { return std::string(instance.param.name); });
