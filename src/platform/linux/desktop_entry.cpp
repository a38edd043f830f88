#include "platform/linux/desktop_entry.h"

#include <QHash>
#include <QUrl>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// The keys of the group "Desktop Entry"; of several lines with one key the first counts.
QHash<QString, QString> entriesOf(const QString &text)
{
    QHash<QString, QString> entries;
    bool inGroup = false;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QStringView trimmed = line.trimmed();
        if (trimmed.startsWith(u'[')) {
            inGroup = trimmed == u"[Desktop Entry]";
            continue;
        }
        const qsizetype equals = trimmed.indexOf(u'=');
        if (!inGroup || equals <= 0 || trimmed.startsWith(u'#'))
            continue;
        const QString key = trimmed.first(equals).trimmed().toString();
        if (!entries.contains(key))
            entries.insert(key, trimmed.sliced(equals + 1).trimmed().toString());
    }
    return entries;
}

QString unescaped(const QString &value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QChar escape = value[++i];
        if (escape == u's')
            text += u' ';
        else if (escape == u'n')
            text += u'\n';
        else if (escape == u't')
            text += u'\t';
        else if (escape == u'r')
            text += u'\r';
        else
            text += escape;
    }
    return text;
}

// The first word of a command: up to a blank outside double quotes, in which "\" protects the next character.
QString firstWord(const QString &command)
{
    QString word;
    bool quoted = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        const QChar c = command[i];
        if (c == u'"') {
            quoted = !quoted;
        } else if (quoted && c == u'\\' && i + 1 < command.size()) {
            word += command[++i];
        } else if (!quoted && c.isSpace()) {
            if (!word.isEmpty())
                break;
        } else {
            word += c;
        }
    }
    return word;
}

} // namespace

std::optional<QString> readDesktopEntry(QByteArrayView bytes)
{
    const QHash<QString, QString> entries = entriesOf(QString::fromUtf8(bytes));
    const QString type = entries.value(u"Type"_s);

    QString target;
    if (type == "Application"_L1) {
        target = firstWord(unescaped(entries.value(u"Exec"_s)));
    } else if (type == "Link"_L1) {
        target = unescaped(entries.value(u"URL"_s));
        if (const QUrl address(target); address.isLocalFile())
            target = address.toLocalFile();
    } else if (type == "Directory"_L1 || type == "FSDevice"_L1) {
        target = unescaped(entries.value(u"Path"_s));
    }
    return target.isEmpty() ? std::nullopt : std::optional(target);
}

} // namespace plum
