#pragma once

#include "library/app_folders.h"

#include <QByteArray>
#include <QString>

#include <utility>

namespace plum {

class Paths;
class TextCodec;

// Module `modINI`: the settings in `config\load\set.ini`, which has the launcher's hotkey alone, or in
// another file beside it, with the rules of the private-profile calls. Names are compared without regard to
// letter case, blanks around names and values do not count, and one pair of quotes around a value is taken
// off. Of several sections or keys with one name the first counts.
class SettingsFile
{
public:
    SettingsFile(const Paths &paths, TextCodec &codec, QString name = QStringLiteral("set.ini"))
        : m_folders(paths)
        , m_codec(codec)
        , m_name(std::move(name))
    {
    }

    // Everything that is no hotkey of the launcher stands in `options.ini`.
    static SettingsFile options(const Paths &paths, TextCodec &codec)
    {
        return {paths, codec, QStringLiteral("options.ini")};
    }

    bool exists() const;

    // The whole file; empty when there is none.
    QByteArray content() const;

    // At most 1,024 characters; empty when there is no such file, section or key.
    QString ReadSetting(const QString &section, const QString &key) const;

    // Other lines keep their bytes. A write that fails is silent and leaves the old file.
    void WriteSetting(const QString &section, const QString &key, const QString &value);

private:
    QString systemPath() const;

    AppFolders m_folders;
    TextCodec &m_codec;
    QString m_name;
};

// The two operations on a file's bytes.
QString profileValue(QByteArrayView content, QStringView section, QStringView key, TextCodec &codec);
QByteArray withProfileValue(
    const QByteArray &content, QStringView section, QStringView key, QStringView value, TextCodec &codec);

} // namespace plum
