#include "library/app_library.h"

#include "commands/file_functions.h"
#include "engine/launcher.h"
#include "engine/text_functions.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/safe_file.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "platform/text_codec.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView forbiddenCharacters = u"\\/:*?\"<|>";

bool hasForbiddenCharacter(QStringView keyword)
{
    return std::ranges::any_of(keyword, [](QChar c) { return forbiddenCharacters.contains(c); });
}

// Bytes that were cut somewhere, without the part of a UTF-8 character at their end: for the rest would not
// be taken for UTF-8 with it.
QByteArray wholeCharacters(const QByteArray &bytes)
{
    constexpr qsizetype longest = 4;
    for (qsizetype last = bytes.size() - 1; last >= 0 && last >= bytes.size() - longest; --last) {
        const auto byte = static_cast<uchar>(bytes[last]);
        if ((byte & 0xc0) == 0x80)
            continue;
        const qsizetype needed = byte >= 0xf0 ? 4 : byte >= 0xe0 ? 3 : byte >= 0xc0 ? 2 : 1;
        return last + needed > bytes.size() ? bytes.first(last) : bytes;
    }
    return bytes;
}

} // namespace

AppGuide guideOf(const QString &firstLine)
{
    if (!firstLine.startsWith("//guide:"_L1))
        return {};
    const QString content = firstLine.sliced(8);
    return {content.startsWith("http"_L1) ? AppGuide::Kind::Address : AppGuide::Kind::Text, content};
}

bool AppLibrary::isFolderName(const QString &keyword)
{
    return !keyword.isEmpty() && keyword != "."_L1 && keyword != ".."_L1 && !keyword.contains(u'/')
        && !keyword.contains(u'\\') && !keyword.contains(QChar(0));
}

bool AppLibrary::CheckKeyword(const QString &keyword) const
{
    if (keyword.isEmpty())
        return false;
    if (!hasForbiddenCharacter(keyword))
        return true;
    say(u"Can not exist *[\\/:*?\"<|>]*"_s);
    return false;
}

QString AppLibrary::appPath(const QString &keyword, const QString &fileName) const
{
    return m.paths.programFolder() + u"\\config\\apps\\"_s + keyword + u'\\' + fileName;
}

// The app's folder as the system opens it, without a separator at its end.
std::optional<QString> AppLibrary::systemFolder(const QString &keyword) const
{
    if (!isFolderName(keyword))
        return std::nullopt;
    return m.paths.toSystem(m.paths.programFolder() + u"\\config\\apps\\"_s + keyword);
}

bool AppLibrary::exists(const QString &keyword) const
{
    if (keyword.isEmpty())
        return QFileInfo(m.paths.toSystem(appPath({}))).isDir();
    const auto folder = systemFolder(keyword);
    return folder && QFileInfo::exists(*folder);
}

void AppLibrary::say(const QString &text) const
{
    m.dialogs.showMessage({.text = text, .systemModal = true});
}

// A folder could not be made: the keyword's characters explain it, or only the system knows.
void AppLibrary::sayFailed(const QString &keyword) const
{
    if (CheckKeyword(keyword))
        say(u"Error"_s);
}

void AppLibrary::saveOrder() const
{
    m.listFile.ConfigSave(m.lists.List.stringList());
}

bool AppLibrary::CreateApp(const QString &keyword, const QString &scriptText)
{
    if (keyword.isEmpty()) {
        say(u"Keyword is required"_s);
        return false;
    }
    if (exists(keyword)) {
        m.dialogs.showMessage({.text = u"The Keyword already exists, whether it is renamed ?"_s});
        return false;
    }
    // Characters that one system cannot store in a folder name fail on every system: libraries travel.
    const auto folder = systemFolder(keyword);
    if (!folder || hasForbiddenCharacter(keyword) || !QDir().mkpath(*folder)) {
        sayFailed(keyword);
        return false;
    }
    if (!replaceFile(*folder + u"/main.wf"_s, m.codec.toSystem(scriptText))) {
        QDir().rmdir(*folder);
        say(u"Error"_s);
        return false;
    }
    m.lists.append(keyword);
    say(u"Successfully"_s);
    saveOrder();
    return true;
}

bool AppLibrary::SaveApp(const QString &keyword, const QString &scriptText)
{
    return saveBytes(keyword, u"main.wf"_s, m.codec.toSystem(scriptText));
}

ScriptFile AppLibrary::scriptFile(const QString &keyword, const QString &fileName) const
{
    QFile file(m.paths.toSystem(appPath(keyword, fileName)));
    if (!isFolderName(keyword) || !QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return {file.readAll(), m.codec};
}

bool AppLibrary::saveScript(const QString &keyword, const QString &fileName, const ScriptFile &opened,
    const QString &shown, ScriptFile::LineEnds lineEnds)
{
    return saveBytes(keyword, fileName, opened.withText(shown, lineEnds, m.codec));
}

bool AppLibrary::saveBytes(const QString &keyword, const QString &fileName, const QByteArray &script)
{
    if (keyword.isEmpty()) {
        say(u"Keyword is required"_s);
        return false;
    }
    const bool saved = systemFolder(keyword) && exists(keyword)
        && replaceFile(m.paths.toSystem(appPath(keyword, fileName)), script);
    say(saved ? u"Successfully"_s : u"Error"_s);
    return saved;
}

bool AppLibrary::RenameApp(const QString &oldKeyword, const QString &newKeyword)
{
    if (newKeyword.isEmpty())
        return false;
    if (exists(newKeyword)) {
        say(u"Keyword already exists"_s);
        return false;
    }
    const auto from = systemFolder(oldKeyword);
    const auto to = systemFolder(newKeyword);
    if (!from || !to || hasForbiddenCharacter(newKeyword) || !QDir().rename(*from, *to)) {
        sayFailed(newKeyword);
        return false;
    }
    m.lists.rename(oldKeyword, newKeyword);
    say(u"Successfully"_s);
    saveOrder();
    return true;
}

bool AppLibrary::DeleteApp(const QString &keyword)
{
    if (keyword.isEmpty() || !m.dialogs.askYesNo(u"确定删除?"_s, u"提示"_s))
        return false;
    if (const auto folder = systemFolder(keyword)) {
        FolderOp(u"delfold"_s, appPath(keyword).chopped(1), m.paths);
        if (QFileInfo(*folder).isDir()) {
            say(u"Error"_s);
            return false;
        }
    }
    m.lists.remove(keyword);
    saveOrder();
    return true;
}

bool AppLibrary::InstallPackage(const QString &package)
{
    const QString path = Piece(package, u"|"_s, 0);
    const QString keyword = Piece(package, u"|"_s, 1);
    const auto folder = systemFolder(keyword);
    if (!folder || !m.unpacker.extract(m.paths.toSystem(path), *folder)) {
        say(u"Error"_s);
        return false;
    }
    say(u"Successfully"_s);
    m.lists.insertFirst(keyword);
    saveOrder();
    return true;
}

AppLibrary::Dropped AppLibrary::DropPackage(const QString &path)
{
    if (!path.endsWith(".wfp"_L1))
        return Dropped::Ignored;
    const qsizetype nameStart = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1;
    const QString keyword = path.sliced(nameStart).chopped(4);
    const QString package = path + u'|' + keyword;
    if (!exists(keyword)) {
        InstallPackage(package);
        return Dropped::Done;
    }
    m_pendingInstall = package;
    return Dropped::NeedsName;
}

void AppLibrary::ListApps(QStringList &list) const
{
    ListSubfolders(list, appPath({}).chopped(1), m.paths);
}

void AppLibrary::OpenAppFolder(const QString &keyword)
{
    m.shell.open(keyword.isEmpty() ? appPath({}).chopped(1) : appPath(keyword), {}, ShowState::Normal);
}

AppGuide AppLibrary::guide(const QString &keyword, qint64 mostBytes) const
{
    QFile file(m.paths.toSystem(appPath(keyword, u"main.wf"_s)));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(mostBytes);
    const qsizetype end = bytes.indexOf('\r');
    return guideOf(m.codec.fromSystem(end < 0 ? wholeCharacters(bytes) : bytes.first(end)));
}

} // namespace plum
