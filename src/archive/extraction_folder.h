#pragma once

#include <QFile>
#include <QHash>
#include <QString>
#include <QStringView>

#include <optional>
#include <unordered_map>

namespace plum {

class Paths;

// True for the name of an archive entry (parts separated by "\") that stays below the folder it is unpacked
// into: no "..", no root, drive or stream (":"), no NUL, and no device where the system takes names for those
// (`Paths::interpretsNames`).
bool staysInside(QStringView entryName, bool namesAreInterpreted);

// The folder that an archive is unpacked into. Makes folders and files below it and nothing outside of it:
// neither by an entry's name nor through a link that stands below the folder.
class ExtractionFolder
{
public:
    // `folder` as callers write it, with "\"; a "\" at its end makes no difference.
    ExtractionFolder(const Paths &paths, const QString &folder);

    enum class Outcome {
        Done,
        Outside, // the name, or a link on its way, leads out of the folder
        NoFolder, // a folder cannot be made
        NoFile, // the file cannot be made
    };

    // Makes the folder `name` (relative, empty for the folder itself) with all that are missing above it.
    Outcome makeFolder(QStringView name);

    // Creates the file `name`, empty, with its folder, and opens it in `file` for writing. An existing file
    // is overwritten.
    Outcome createFile(QStringView name, QFile &file);

private:
    struct Folder
    {
        QString systemPath;
        bool isNew = false; // made here, so nothing was in it
        std::optional<QHash<QString, QString>> oldNames = {}; // lower case to real, of what was in an old one
    };

    Folder *enter(const QString &name);
    Folder *enterBelow(Folder &parent, const QString &name, QStringView lastPart);
    Outcome outcomeOfEntering() const { return m_metLink ? Outcome::Outside : Outcome::NoFolder; }
    QString existingName(Folder &parent, QStringView part);

    const Paths &m_paths;
    QString m_folder;
    std::unordered_map<QString, Folder> m_folders; // by relative name
    QString m_lastName; // of the last file's folder, as its entry spelled it
    Folder *m_last = nullptr;
    bool m_metLink = false;
};

} // namespace plum
