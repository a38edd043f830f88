#include "archive/extraction_folder.h"

#include "platform/device_names.h"
#include "platform/paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QVarLengthArray>

#include <algorithm>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// Windows drops dots and blanks at the end of a name, so ".. " is ".." too.
bool leadsUp(QStringView part)
{
    const bool onlyDots = std::ranges::all_of(part, [](QChar c) { return c == u'.' || c == u' '; });
    return onlyDots && part.count(u'.') >= 2;
}

// "a\\b\.\c\" names what "a\b\c" names.
QString tidied(QStringView name)
{
    QString result;
    result.reserve(name.size());
    for (const QStringView part : name.tokenize(u'\\', Qt::SkipEmptyParts)) {
        if (part == u"."_s)
            continue;
        if (!result.isEmpty())
            result += u'\\';
        result += part;
    }
    return result;
}

} // namespace

bool staysInside(QStringView entryName, bool namesAreInterpreted)
{
    if (entryName.startsWith(u'\\') || entryName.contains(u':') || entryName.contains(QChar()))
        return false;
    return std::ranges::none_of(entryName.tokenize(u'\\').toContainer<QVarLengthArray<QStringView, 16>>(),
        [namesAreInterpreted](
            QStringView part) { return leadsUp(part) || (namesAreInterpreted && isDeviceName(part)); });
}

ExtractionFolder::ExtractionFolder(const Paths &paths, const QString &folder)
    : m_paths(paths)
    , m_folder(folder)
{
    while (m_folder.size() > 1 && m_folder.endsWith(u'\\') && !m_folder.endsWith(u":\\"))
        m_folder.chop(1);
}

ExtractionFolder::Outcome ExtractionFolder::makeFolder(QStringView name)
{
    if (!staysInside(name, m_paths.interpretsNames()))
        return Outcome::Outside;
    return enter(tidied(name)) ? Outcome::Done : outcomeOfEntering();
}

ExtractionFolder::Outcome ExtractionFolder::createFile(QStringView name, QFile &file)
{
    if (!staysInside(name, m_paths.interpretsNames()))
        return Outcome::Outside;
    const qsizetype leafAt = name.lastIndexOf(u'\\') + 1;
    const QStringView folder = name.first(leafAt);
    if (!m_last || folder != m_lastName) {
        m_last = enter(tidied(folder));
        m_lastName = folder.toString();
    }
    if (!m_last)
        return outcomeOfEntering();

    file.setFileName(m_last->systemPath + u'/' + name.sliced(leafAt).toString());
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return Outcome::Done;
    const QFileInfo there(file.fileName());
    if (there.isSymLink())
        return Outcome::Outside;
    // Opening anything but a file could wait for ever (a pipe).
    const bool isOpen
        = there.isFile() && file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    return isOpen ? Outcome::Done : Outcome::NoFile;
}

ExtractionFolder::Folder *ExtractionFolder::enter(const QString &name)
{
    if (const auto known = m_folders.find(name); known != m_folders.end())
        return &known->second;

    m_metLink = false;
    if (name.isEmpty()) {
        const QString systemPath = m_paths.toSystem(m_folder);
        const bool existed = QFileInfo(systemPath).isDir();
        if (!existed && !QDir().mkpath(systemPath))
            return nullptr;
        return &m_folders.emplace(name, Folder{.systemPath = systemPath, .isNew = !existed}).first->second;
    }
    const qsizetype lastAt = name.lastIndexOf(u'\\') + 1;
    Folder *const parent = enter(name.first(std::max<qsizetype>(lastAt - 1, 0)));
    return parent ? enterBelow(*parent, name, QStringView(name).sliced(lastAt)) : nullptr;
}

ExtractionFolder::Folder *ExtractionFolder::enterBelow(
    Folder &parent, const QString &name, QStringView lastPart)
{
    Folder folder{.systemPath = parent.systemPath + u'/' + existingName(parent, lastPart)};
    folder.isNew = QDir().mkdir(folder.systemPath);
    if (!folder.isNew) {
        const QFileInfo there(folder.systemPath);
        m_metLink = there.isSymLink() || there.isJunction();
        if (m_metLink || !there.isDir())
            return nullptr;
    }
    return &m_folders.emplace(name, std::move(folder)).first->second;
}

// The folder's own spelling of `part`, if it had something of that name before; letter case does not count.
QString ExtractionFolder::existingName(Folder &parent, QStringView part)
{
    QString name = part.toString();
    if (parent.isNew || QFileInfo::exists(parent.systemPath + u'/' + name))
        return name;
    if (!parent.oldNames) {
        parent.oldNames.emplace();
        QDirIterator entries(parent.systemPath, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        while (entries.hasNext()) {
            entries.next();
            parent.oldNames->insert(entries.fileName().toLower(), entries.fileName());
        }
    }
    return parent.oldNames->value(name.toLower(), name);
}

} // namespace plum
