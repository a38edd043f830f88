#include "library/settings_file.h"

#include "library/safe_file.h"
#include "platform/text_codec.h"

#include <QFile>
#include <QFileInfo>

#include <optional>
#include <vector>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxValueLength = 1024;

// One line of the file: its bytes with whatever ends it, and its text without blanks at both ends.
// Lines are decoded one by one, so a line in another encoding does not change what the others say.
struct Line
{
    QByteArrayView bytes;
    QString text;

    bool isComment() const { return text.startsWith(u';'); }

    std::optional<QStringView> sectionName() const
    {
        if (!text.startsWith(u'['))
            return std::nullopt;
        const qsizetype end = text.indexOf(u']');
        return QStringView(text).sliced(1, (end < 0 ? text.size() : end) - 1).trimmed();
    }

    bool isKey(QStringView key) const
    {
        const qsizetype equals = text.indexOf(u'=');
        return !isComment() && equals > 0
            && QStringView(text).first(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0;
    }

    QString value() const
    {
        QStringView value = QStringView(text).sliced(text.indexOf(u'=') + 1).trimmed();
        const bool quoted = value.size() >= 2 && value.front() == value.back()
            && (value.front() == u'"' || value.front() == u'\'');
        return (quoted ? value.sliced(1, value.size() - 2) : value).toString();
    }
};

std::vector<Line> linesOf(QByteArrayView content, TextCodec &codec)
{
    std::vector<Line> lines;
    for (qsizetype from = 0; from < content.size();) {
        qsizetype end = from;
        while (end < content.size() && content[end] != '\r' && content[end] != '\n')
            ++end;
        qsizetype next = end;
        if (next < content.size())
            next += content.sliced(next).startsWith("\r\n") ? 2 : 1;
        lines.push_back({content.sliced(from, next - from),
            codec.fromSystem(content.sliced(from, end - from)).trimmed()});
        from = next;
    }
    return lines;
}

// The lines of a section, without its head; empty places say where a section or key is missing.
struct Place
{
    std::optional<size_t> head;
    size_t end = 0; // one past the section's last line
    std::optional<size_t> key;
};

Place find(const std::vector<Line> &lines, QStringView section, QStringView key)
{
    Place place;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (const auto name = lines[i].sectionName()) {
            if (place.head)
                break;
            if (name->compare(section, Qt::CaseInsensitive) == 0) {
                place.head = i;
                place.end = i + 1;
            }
        } else if (place.head) {
            place.end = i + 1;
            if (!place.key && lines[i].isKey(key))
                place.key = i;
        }
    }
    return place;
}

bool endsLine(QByteArrayView bytes)
{
    return bytes.isEmpty() || bytes.endsWith('\n') || bytes.endsWith('\r');
}

} // namespace

QString profileValue(QByteArrayView content, QStringView section, QStringView key, TextCodec &codec)
{
    const std::vector<Line> lines = linesOf(content, codec);
    const Place place = find(lines, section.trimmed(), key.trimmed());
    return place.key
        ? lines[*place.key].value().first(std::min(maxValueLength, lines[*place.key].value().size()))
        : QString();
}

QByteArray withProfileValue(
    const QByteArray &content, QStringView section, QStringView key, QStringView value, TextCodec &codec)
{
    const std::vector<Line> lines = linesOf(content, codec);
    const Place place = find(lines, section.trimmed(), key.trimmed());
    const QByteArray entry
        = codec.toSystem(QString(key.trimmed().toString() + u'=' + value.toString())) + "\r\n";

    if (!place.head) {
        const QByteArray head = "[" + codec.toSystem(section.trimmed()) + "]\r\n";
        return content + (endsLine(content) ? "" : "\r\n") + head + entry;
    }

    // A new key goes behind the section's last line that says something.
    size_t newKeyAt = place.end;
    while (newKeyAt > *place.head + 1 && lines[newKeyAt - 1].text.isEmpty())
        --newKeyAt;

    QByteArray result;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (place.key == i) {
            result += entry;
            continue;
        }
        if (!place.key && i == newKeyAt)
            result += entry;
        result += lines[i].bytes;
    }
    if (!place.key && newKeyAt == lines.size())
        result += (endsLine(result) ? "" : "\r\n") + entry;
    return result;
}

QString SettingsFile::systemPath() const
{
    return m_folders.onDisk(m_folders.loadFile(m_name));
}

bool SettingsFile::exists() const
{
    return QFileInfo(systemPath()).isFile();
}

QByteArray SettingsFile::content() const
{
    QFile file(systemPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString SettingsFile::ReadSetting(const QString &section, const QString &key) const
{
    return profileValue(content(), section, key, m_codec);
}

void SettingsFile::WriteSetting(const QString &section, const QString &key, const QString &value)
{
    const QString path = systemPath();
    QFile file(path);
    // A file that is there but cannot be read must not be replaced by one with a single key.
    if (file.exists() && !file.open(QIODevice::ReadOnly))
        return;
    replaceFile(
        path, withProfileValue(file.isOpen() ? file.readAll() : QByteArray(), section, key, value, m_codec));
}

} // namespace plum
