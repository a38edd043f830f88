#include "platform/linux/xdg_autostart.h"

#include "platform/linux/desktop_entry.h"
#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString entryFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/autostart/plum.desktop"_s;
}

// A value's "\" is written twice.
QString escaped(const QString &value)
{
    return QString(value).replace(u'\\', "\\\\"_L1);
}

// As one word of a command: in double quotes, in which four characters are marked by a "\", and "%" twice.
QString asWord(const QString &path)
{
    QString word;
    for (const QChar c : path) {
        if (u"\"`$\\"_s.contains(c))
            word += u'\\';
        word += c == u'%' ? u"%%"_s : QString(c);
    }
    return u'"' + word + u'"';
}

QString targetOf(const QString &file)
{
    QFile entry(file);
    if (!entry.open(QIODevice::ReadOnly))
        return {};
    return readDesktopEntry(entry.readAll()).value_or(QString()).replace("%%"_L1, "%"_L1);
}

} // namespace

QString XdgAutostart::program() const
{
    return m_paths.programFolder() + u"/plum"_s;
}

bool XdgAutostart::isOn() const
{
    return targetOf(entryFile()) == program();
}

bool XdgAutostart::setOn(bool isOn)
{
    const QString file = entryFile();
    if (!isOn)
        return !this->isOn() || QFile::remove(file);
    // Without the program, as after its removal, the desktop passes the entry over.
    const QString entry
        = u"[Desktop Entry]\nType=Application\nName=Plum\nExec=%1\nTryExec=%2\nIcon=plum\n"_s.arg(
            escaped(asWord(program())), escaped(program()));
    QSaveFile saved(file);
    const QByteArray content = entry.toUtf8();
    return QDir().mkpath(QFileInfo(file).path()) && saved.open(QIODevice::WriteOnly)
        && saved.write(content) == content.size() && saved.commit();
}

} // namespace plum
