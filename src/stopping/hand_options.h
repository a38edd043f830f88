#pragma once

#include "platform/hand_watch.h"

#include <QByteArray>
#include <QHash>
#include <QString>

namespace plum {

class Platform;

// What the user has set about stopping and holding back runs: the sections `[stop]` and `[scoped]` of
// `config\load\options.ini`, as they were when a run began.
class HandOptions
{
public:
    explicit HandOptions(Platform &platform)
        : m_platform(platform)
    {
    }

    void read();

    // [stop] hotkey=
    StopHotkey hotkey() const;

    // [stop] yield=on
    bool yields() const { return isOn(u"stop", u"yield"); }

    // Of an app what [scoped] says behind its keyword; else, and for a script on the command line,
    // [stop] scoped=on.
    bool isScoped(const QString &keyword) const;

private:
    QString valueOf(QStringView section, QStringView key) const;
    bool isOn(QStringView section, QStringView key) const;

    Platform &m_platform;
    QByteArray m_file;
    mutable QHash<QString, bool> m_isScoped; // what has been looked up: each key press asks
};

} // namespace plum
