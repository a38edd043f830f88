#include "commands/file_functions.h"

#include "engine/script_folders.h"
#include "platform/paths.h"
#include "platform/text_codec.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

QString plainPath(const Paths &paths, const QString &path)
{
    return QDir::cleanPath(QFileInfo(paths.toSystem(path)).absoluteFilePath());
}

bool isInside(const QString &folder, const QString &library, const Paths &paths)
{
    return folder.startsWith(plainPath(paths, library) + u'/');
}

void deleteFolder(const QString &folder)
{
    if (QFileInfo(folder).isSymLink())
        QFile::remove(folder);
    else
        QDir(folder).removeRecursively();
}

} // namespace

bool WriteText(
    const QString &path, const QString &text, const QString &mode, const Paths &paths, TextCodec &codec)
{
    QIODevice::OpenMode openMode = QIODevice::WriteOnly;
    if (mode == "append"_L1)
        openMode |= QIODevice::Append;
    else if (mode.isEmpty())
        openMode |= QIODevice::Truncate;
    else
        return false;

    QFile file(paths.toSystem(path));
    const QFileInfo existing(file);
    if (path.isEmpty() || !paths.mayWrite(file.fileName()) || (existing.exists() && !existing.isFile())
        || !file.open(openMode))
        return false;
    const QByteArray bytes = codec.toSystem(text) + "\r\n";
    return file.write(bytes) == bytes.size() && file.flush();
}

bool writeExactly(
    const QString &path, const QString &text, bool appends, const Paths &paths, TextCodec &codec)
{
    const QString file = paths.toSystem(path);
    const QFileInfo existing(file);
    if (path.isEmpty() || !paths.mayWrite(file) || (existing.exists() && !existing.isFile()))
        return false;
    QByteArray before;
    if (appends && existing.exists()) {
        QFile old(file);
        if (!old.open(QIODevice::ReadOnly))
            return false;
        before = old.read(utf8Mark.size());
    }
    const QByteArray encoded = codec.toSystem(text);
    const bool isUtf8 = QByteArrayView(before) == utf8Mark;
    const bool fits = codec.fromSystem(encoded) == text;
    // What is behind other text has to be in the same encoding.
    if (!fits && !before.isEmpty() && !isUtf8)
        return false;
    QByteArray bytes = fits && !isUtf8 ? encoded : text.toUtf8();
    if (!fits && before.isEmpty())
        bytes.prepend(utf8Mark.toByteArray());
    if (appends) {
        QFile end(file);
        return end.open(QIODevice::WriteOnly | QIODevice::Append) && end.write(bytes) == bytes.size()
            && end.flush();
    }
    QSaveFile whole(file);
    return whole.open(QIODevice::WriteOnly) && whole.write(bytes) == bytes.size() && whole.commit();
}

void FolderOp(const QString &op, const QString &path, const Paths &paths, const ScriptFolders &folders)
{
    if (path.isEmpty())
        return;
    const QString folder = plainPath(paths, path);
    if (!QFileInfo(folder).isDir())
        return;
    if (op == "delfold"_L1 && isInside(folder, folders.apps(), paths))
        deleteFolder(folder);
    else if (op == "addfold"_L1)
        QDir().mkdir(folder);
}

} // namespace plum
