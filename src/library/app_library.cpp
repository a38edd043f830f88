#include "library/app_library.h"

#include "engine/launcher.h"
#include "library/app_list_file.h"
#include "library/app_lists.h"
#include "library/fixed_texts.h"
#include "library/package_installer.h"
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

// What a failure is called, and why below it, where more than the system knows why.
QString errorText(const QString &reason)
{
    return reason.isEmpty() ? u"Error"_s : u"Error\n\n"_s + reason;
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

QString AppLibrary::faultOf(const QString &keyword) const
{
    return keywordMessage(m_folders.fault(keyword));
}

bool AppLibrary::exists(const QString &keyword) const
{
    if (m.installer.isAside(keyword))
        return true;
    if (keyword.isEmpty())
        return QFileInfo(m.paths.toSystem(appPath({}))).isDir();
    const auto folder = systemFolder(keyword);
    return folder && QFileInfo::exists(*folder);
}

void AppLibrary::say(const QString &text) const
{
    m.dialogs.showMessage({.text = text, .systemModal = true, .meaning = meaningOfFixed(text)});
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
        const QString text = u"The Keyword already exists, whether it is renamed ?"_s;
        m.dialogs.showMessage({.text = text, .meaning = meaningOfFixed(text)});
        return false;
    }
    const auto change = m_folders.fault(keyword) == KeywordFault::None
        ? LibraryChange::begin(m.installer.changeNeeds(), {.keyword = keyword})
        : nullptr;
    const bool isCreated = change
        && replaceFile(m_folders.onDisk(change->newFolder() + u"\\main.wf"_s), m.codec.toSystem(scriptText))
        && change->arrive({});
    if (!isCreated) {
        sayFailed(keyword);
        return false;
    }
    m_grants.remove(keyword);
    m.lists.append(keyword);
    saveOrder();
    change->close();
    say(u"Successfully"_s);
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

ScriptFile AppLibrary::scriptAt(const QString &systemPath) const
{
    QFile file(systemPath);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return {file.readAll(), m.codec};
}

bool AppLibrary::saveScriptAt(
    const QString &systemPath, const ScriptFile &opened, const QString &shown, ScriptFile::LineEnds lineEnds)
{
    // A link stays one.
    const QString real = QFileInfo(systemPath).canonicalFilePath();
    const bool saved
        = replaceFile(real.isEmpty() ? systemPath : real, opened.withText(shown, lineEnds, m.codec));
    say(saved ? u"Successfully"_s : u"Error"_s);
    return saved;
}

QString AppLibrary::keywordOf(const QString &systemPath) const
{
    const QFileInfo script(QFileInfo(systemPath).canonicalFilePath());
    const QFileInfo app(script.path());
    const bool isInLibrary = script.fileName() == "main.wf"_L1
        && app.path() == QFileInfo(m_folders.onDisk(m_folders.apps())).canonicalFilePath();
    return isInLibrary && AppFolders::isApp(app.fileName()) ? app.fileName() : QString();
}

bool AppLibrary::saveBytes(const QString &keyword, const QString &fileName, const QByteArray &script)
{
    if (keyword.isEmpty()) {
        say(u"Keyword is required"_s);
        return false;
    }
    const bool saved = systemFolder(keyword) && exists(keyword) && replaceInApp(keyword, fileName, script);
    // What the user has written is the user's own.
    if (saved && fileName == "main.wf"_L1)
        m_grants.remove(keyword);
    say(saved ? u"Successfully"_s : u"Error"_s);
    return saved;
}

bool AppLibrary::replaceInApp(
    const QString &keyword, const QString &fileName, const QByteArray &content) const
{
    const auto change = LibraryChange::begin(
        m.installer.changeNeeds(), {.kind = LibraryChange::Kind::Edit, .keyword = keyword});
    if (change && change->replaceFile(fileName, content)) {
        change->close();
        return true;
    }
    // A file behind a link, or in a folder that is one, cannot be moved into place.
    return replaceFile(m_folders.onDisk(appPath(keyword, fileName)), content);
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
    if (!from || !QFileInfo(*from).isDir() || m_folders.fault(newKeyword) != KeywordFault::None) {
        sayFailed(newKeyword);
        return false;
    }
    // At every moment the app has its grant, whatever it is called then.
    if (const auto grant = m_grants.of(oldKeyword))
        m_grants.set(newKeyword, *grant);
    else
        m_grants.remove(newKeyword);
    const auto change = LibraryChange::begin(m.installer.changeNeeds(),
        {.kind = LibraryChange::Kind::Rename, .keyword = oldKeyword, .newKeyword = newKeyword});
    // A full disk has no room for the plan, but for another name.
    if (change ? !change->rename() : !QDir().rename(*from, *to)) {
        m_grants.remove(newKeyword);
        sayFailed(newKeyword);
        return false;
    }
    m_grants.remove(oldKeyword);
    m.lists.rename(oldKeyword, newKeyword);
    saveOrder();
    if (change)
        change->close();
    say(u"Successfully"_s);
    return true;
}

bool AppLibrary::DeleteApp(const QString &keyword)
{
    if (keyword.isEmpty() || !m.dialogs.askToDelete(u"确定删除?"_s, u"提示"_s, keyword))
        return false;
    const auto folder = systemFolder(keyword);
    std::unique_ptr<LibraryChange> change;
    if (folder && QFileInfo(*folder).isDir()) {
        change = LibraryChange::begin(
            m.installer.changeNeeds(), {.kind = LibraryChange::Kind::Delete, .keyword = keyword});
        // Deleting makes room on a full disk, which has none for the plan.
        if (change ? !change->remove() : !discard(*folder, m.installer.changeNeeds().trash)) {
            say(u"Error"_s);
            return false;
        }
    }
    m_grants.remove(keyword);
    m.lists.remove(keyword);
    saveOrder();
    if (change)
        change->close();
    return true;
}

bool AppLibrary::InstallPackage(const QString &packagePath, const QString &keyword)
{
    const InstallResult result
        = m.installer.install({.path = packagePath, .keyword = keyword}, [this](const QString &installed) {
              m.lists.insertFirst(installed);
              saveOrder();
          });
    if (result)
        say(u"Successfully"_s);
    else
        m.dialogs.showMessage({.text = result.message(),
            .icon = MessageIcon::Critical,
            .systemModal = true,
            .meaning = meaningOfFixed(result.message())});
    return bool(result);
}

QString AppLibrary::packageKeyword(const QString &path)
{
    const qsizetype nameStart = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1;
    const QString name = path.sliced(nameStart);
    return name.left(name.lastIndexOf(u'.'));
}

QString AppLibrary::versionBefore(const QString &keyword) const
{
    const auto before = m.installer.versionBefore(keyword);
    return before ? before->version : QString();
}

bool AppLibrary::goBack(const QString &keyword)
{
    const InstallResult result = m.installer.goBack(keyword, [this](const QString &) { saveOrder(); });
    say(result ? u"Successfully"_s : result.message());
    return static_cast<bool>(result);
}

qint64 AppLibrary::packageSize(const QString &path) const
{
    return QFileInfo(m.paths.toSystem(path)).size();
}

AppLibrary::Dropped AppLibrary::DropPackage(const QString &path)
{
    if (!path.endsWith(".wfp"_L1))
        return Dropped::Ignored;
    const QString keyword = packageKeyword(path);
    if (exists(keyword))
        return Dropped::NeedsName;
    if (!faultOf(keyword).isEmpty()) {
        InstallPackage(path, keyword);
        return Dropped::Refused;
    }
    return Dropped::MayInstall;
}

void AppLibrary::ListApps(QStringList &list) const
{
    ListSubfolders(list, appPath({}).chopped(1), m.paths);
}

QStringList AppLibrary::takeInNewApps()
{
    QStringList found;
    ListApps(found);
    found.removeIf([&](const QString &keyword) { return m.lists.List.stringList().contains(keyword); });
    for (const QString &keyword : std::as_const(found))
        m.lists.append(keyword);
    if (!found.isEmpty())
        saveOrder();
    return found;
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
