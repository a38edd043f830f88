#pragma once

#include "archive/inflate.h"
#include "archive/zip_format.h"

#include <QObject>

#include <optional>
#include <variant>
#include <vector>

class QFile;

namespace plum {

class ArchiveFile;
class ExtractionFolder;
class Paths;
class TextCodec;

// Reads a ZIP archive and writes its entries into a folder. Errors are messages, told by `LastError` and
// `UnzipError`; none is shown. Checksums are not looked at.
// (A function cannot have its class's name, hence the capital letter in this one.)
class Unzip : public QObject
{
    Q_OBJECT

public:
    Unzip(const Paths &paths, TextCodec &codec, QObject *parent = nullptr);
    ~Unzip() override;

    // Reads the directory of the archive at `ZipName`. After a failure there are no entries.
    bool Init(const QString &ZipName);

    // Which entries to extract: all of them, those with a true element of their index, or those whose name
    // matches a wildcard pattern ("*.*" matches every name, also one without a dot).
    using Filter = std::variant<std::monostate, std::vector<bool>, QString>;

    // Extracts below `folder`, which is made if need be; existing files are overwritten. Errors of single
    // entries do not make the result false. It is false when the archive cannot be opened, a local header
    // lies outside of it, or the pattern is none; then the remaining entries are left out.
    // Entries that would land outside of `folder` are skipped with "Error creating output folder", those that
    // lie where another one does with "Entry overlaps another", those that claim to hold more than their
    // compressed bytes can with "Size not supported".
    bool unzip(const QString &folder, const Filter &filter = {});

    QString ZipName() const { return m_zipName; }
    QString Comments() const { return m_comments; }
    int Count() const;
    QString LastError() const { return m_lastError; }

    // Whether the last `unzip` could not write a file that it had made, as on a full disk.
    bool ranOutOfRoom() const { return m_ranOutOfRoom; }

    // An empty record for an index that no entry has.
    ZipEntry EntryInfo(int index) const;

Q_SIGNALS:
    // `index` is that of the entry in hand, -1 when there is none.
    void UnzipError(const QString &message, int index);

    // After each block of a compressed entry: the compressed bytes used so far, of all that it has.
    void UnzipProgress(int index, int position, int total);

private:
    struct Entry;
    enum class Outcome { Done, EntryFailed, Stop };

    bool readDirectory(ArchiveFile &archive);
    std::vector<bool> overlapping(qint64 archiveSize) const;
    bool readComments(ArchiveFile &archive, qint64 position);

    bool extractAll(const QString &folder, const Filter &filter);
    std::optional<bool> isSelected(const Filter &filter, const Entry &entry) const;
    Outcome extract(
        ArchiveFile &archive, ExtractionFolder &target, const QString &folder, const Entry &entry);
    bool isExtractable(const Entry &entry);
    bool writeEntry(
        ArchiveFile &archive, qint64 position, const Entry &entry, QFile &file, const QString &path);
    bool decode(ArchiveFile &archive, qint64 position, const Entry &entry, QFile &file, const QString &path);

    bool error(const QString &message);
    bool mappingError(const QString &path);
    bool roomError(const QString &path);

    const Paths &m_paths;
    TextCodec &m_codec;
    QString m_zipName;
    QString m_comments;
    QString m_lastError;
    std::vector<Entry> m_entries;
    std::vector<bool> m_overlaps; // by entry, for the extraction in hand
    int m_index = -1;
    bool m_ranOutOfRoom = false;
    Inflater m_inflater;
    std::vector<quint8> m_window;
};

} // namespace plum
