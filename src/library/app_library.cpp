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
#include <QFileInfo>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// What a failure is called, and why below it, where more than the system knows why.
QString errorText(const QString &reason)
{
    return reason.isEmpty() ? u"Error"_s : u"Error\n\n"_s + reason;
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
    return plum::isFolderName(keyword);
}

bool AppLibrary::CheckKeyword(const QString &keyword) const
{
    const bool isForbidden = m_folders.fault(keyword) == KeywordFault::Forbidden;
    if (isForbidden)
        say(keywordMessage(KeywordFault::Forbidden));
    return !isForbidden && !keyword.isEmpty();
}

QString AppLibrary::appPath(const QString &keyword, const QString &fileName) const
{
    return m_folders.appFile(keyword, fileName);
}

// The app's folder as the system opens it, without a separator at its end.
std::optional<QString> AppLibrary::systemFolder(const QString &keyword) const
{
    return m_folders.appOnDisk(keyword);
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

// A folder could not be made: the keyword explains it, or only the system knows.
void AppLibrary::sayFailed(const QString &keyword) const
{
    if (CheckKeyword(keyword))
        say(errorText(keywordMessage(m_folders.fault(keyword))));
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
    const auto folder = systemFolder(keyword);
    if (!folder || m_folders.fault(keyword) != KeywordFault::None || !QDir().mkpath(*folder)) {
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
    return saveScript(keyword, u"main.wf"_s, scriptText);
}

bool AppLibrary::saveScript(const QString &keyword, const QString &fileName, const QString &scriptText)
{
    if (keyword.isEmpty()) {
        say(u"Keyword is required"_s);
        return false;
    }
    const bool saved = systemFolder(keyword) && exists(keyword)
        && replaceFile(m.paths.toSystem(appPath(keyword, fileName)), m.codec.toSystem(scriptText));
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
    if (!from || !to || m_folders.fault(newKeyword) != KeywordFault::None || !QDir().rename(*from, *to)) {
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
        FolderOp(u"delfold"_s, appPath(keyword).chopped(1), m.paths, m_folders);
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

AppGuide AppLibrary::guide(const QString &keyword) const
{
    QStringList lines;
    LoadLinesIntoList(appPath(keyword, u"main.wf"_s), lines, m.paths, m.codec);
    return guideOf(lines.value(0));
}

QString AppLibrary::scriptText(const QString &keyword, const QString &fileName) const
{
    QStringList lines;
    LoadLinesIntoList(appPath(keyword, fileName), lines, m.paths, m.codec);
    return lines.join("\r\n"_L1);
}

} // namespace plum
