#include "library/app_list_file.h"

#include "engine/text_files.h"
#include "library/safe_file.h"
#include "platform/paths.h"
#include "platform/text_codec.h"

#include <QDir>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace plum {

using namespace Qt::StringLiterals;

void LoadLinesIntoList(const QString &file, QStringList &list, const Paths &paths, TextCodec &codec)
{
    TextFiles(paths, codec).appendLines(file, list);
}

QString configText(const QStringList &keywords)
{
    return keywords.join("\r\n"_L1) + u"\r\n"_s;
}

void ListSubfolders(QStringList &list, const QString &folder, const Paths &paths)
{
    const QStringList names
        = QDir(paths.toSystem(folder))
              .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    std::ranges::copy_if(names, std::back_inserter(list), &AppFolders::isApp);
}

QStringList AppListFile::load() const
{
    QStringList lines;
    LoadLinesIntoList(m_folders.listFile(), lines, m_paths, m_codec);

    // An editor may have saved the file with line feeds alone; a keyword never holds one.
    QStringList keywords;
    for (const QString &line : std::as_const(lines))
        keywords += line.split(u'\n');
    if (!keywords.isEmpty() && !keywords.front().isEmpty()) {
        keywords.removeAll(QString());
        return keywords;
    }

    keywords.removeAll(QString());
    QStringList folders;
    ListSubfolders(folders, m_folders.apps(), m_paths);
    const QSet<QString> named(keywords.begin(), keywords.end());
    for (const QString &folder : std::as_const(folders)) {
        if (!named.contains(folder))
            keywords += folder;
    }
    return keywords;
}

void AppListFile::ConfigSave(const QStringList &keywords)
{
    replaceFile(m_folders.onDisk(m_folders.listFile()), m_codec.toSystem(configText(keywords)));
}

} // namespace plum
