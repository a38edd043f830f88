#include "download/file_download.h"

#include "download/byte_size_text.h"
#include "download/numbered_name.h"
#include "platform/paths.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <array>
#include <limits>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr auto partialSuffix = ".dl"_L1;
constexpr auto versionSuffix = ".dl.cfg"_L1;
constexpr auto patience = std::chrono::seconds(30); // without a byte

constexpr auto urlField = "url"_L1;
constexpr auto validatorField = "validator"_L1;
constexpr auto sizeField = "size"_L1;

constexpr int ok = 200;
constexpr int partialContent = 206;
constexpr int rangeNotSatisfiable = 416;

struct Words
{
    int key;
    const char *text;
};

constexpr std::array statusWords{
    Words{401,
        QT_TRANSLATE_NOOP("plum::FileDownload", "The server wants a name and a password for this file.")},
    Words{403, QT_TRANSLATE_NOOP("plum::FileDownload", "The server does not give this file away.")},
    Words{404, QT_TRANSLATE_NOOP("plum::FileDownload", "The server does not have this file.")},
    Words{410, QT_TRANSLATE_NOOP("plum::FileDownload", "The server does not have this file any more.")},
    Words{429, QT_TRANSLATE_NOOP("plum::FileDownload", "The server is asked too often. Try again later.")},
};

constexpr std::array endWords{
    Words{int(HttpExchange::End::NoAddress),
        QT_TRANSLATE_NOOP("plum::FileDownload", "This is no address of a file on the web.")},
    Words{int(HttpExchange::End::Unreachable),
        QT_TRANSLATE_NOOP("plum::FileDownload", "The server cannot be reached.")},
    Words{int(HttpExchange::End::Untrusted),
        QT_TRANSLATE_NOOP("plum::FileDownload", "The server could not prove who it is.")},
    Words{int(HttpExchange::End::TooSlow),
        QT_TRANSLATE_NOOP("plum::FileDownload", "The server says nothing any more.")},
    Words{int(HttpExchange::End::Cut), QT_TRANSLATE_NOOP("plum::FileDownload", "The connection broke.")},
    Words{int(HttpExchange::End::NotHttp),
        QT_TRANSLATE_NOOP("plum::FileDownload", "What answers there is no web server.")},
    Words{int(HttpExchange::End::Astray),
        QT_TRANSLATE_NOOP(
            "plum::FileDownload", "The address leads round in circles or to where no file can be fetched.")},
};

template <size_t Size> QString wordsFor(const std::array<Words, Size> &words, int key)
{
    const auto found = std::ranges::find(words, key, &Words::key);
    return found == words.end() ? QString() : FileDownload::tr(found->text);
}

QString answerWords(int status)
{
    constexpr int serverErrors = 500;
    if (QString words = wordsFor(statusWords, status); !words.isEmpty())
        return words;
    return status >= serverErrors ? FileDownload::tr("The server has a problem of its own (%1).").arg(status)
                                  : FileDownload::tr("The server does not give this file (%1).").arg(status);
}

QUrl addressOf(const QString &url)
{
    const QString trimmed = url.trimmed();
    return QUrl(trimmed.contains("://"_L1) ? trimmed : "http://"_L1 + trimmed);
}

// "bytes 5-9/10": from where to where, of how many (-1: not said). Nothing when it says something else.
struct Range
{
    qint64 first = 0;
    qint64 last = 0;
    qint64 size = -1;
};

std::optional<Range> contentRange(const QByteArray &header)
{
    if (!header.toLower().startsWith("bytes "))
        return std::nullopt;
    const QList<QByteArray> parts = header.sliced(6).trimmed().split('/');
    const QList<QByteArray> ends = parts[0].split('-');
    bool isFirst = false;
    bool isLast = false;
    bool isSize = parts.value(1) == "*";
    Range range{.first = ends[0].toLongLong(&isFirst), .last = ends.value(1).toLongLong(&isLast)};
    if (!isSize)
        range.size = parts.value(1).toLongLong(&isSize);
    return isFirst && isLast && isSize ? std::optional(range) : std::nullopt;
}

// Weak tags name versions that are alike, not the same bytes.
QByteArray strongTag(const HttpAnswer &answer)
{
    const QByteArray tag = answer.header("ETag");
    return tag.startsWith('"') ? tag : QByteArray();
}

// The first of `path` and its numbered names that fits.
template <class Fits> QString firstName(const QString &path, Fits fits)
{
    QString name = path;
    for (int n = 1; !fits(name) && n < std::numeric_limits<int>::max(); ++n)
        name = NumberedName(path, n);
    return name;
}

} // namespace

FileDownload::FileDownload(const Paths &paths, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
{
    connect(&m_exchange, &HttpExchange::answered, this, &FileDownload::onAnswer);
    connect(&m_exchange, &HttpExchange::arrived, this, &FileDownload::onPiece);
    connect(&m_exchange, &HttpExchange::ended, this, &FileDownload::onEnded);
}

FileDownload::~FileDownload()
{
    m_exchange.stop();
}

QString FileDownload::system(const QString &path) const
{
    return m_paths.toSystem(path);
}

void FileDownload::start()
{
    if (m_busy)
        return;
    m_busy = true;
    m_problem.clear();
    m_speed.clear();
    m_received = 0;
    const QPointer<FileDownload> self(this);
    Q_EMIT Status(DownloadStatus::Sending);
    if (!self || !m_busy)
        return;
    chooseNames();
    send();
}

void FileDownload::pause()
{
    if (m_busy)
        end(DownloadStatus::Paused, {});
}

void FileDownload::chooseNames()
{
    m_resumedAt = 0;
    firstName(m_target, [this](const QString &name) { return usePartial(name); });
    m_version = storedVersion().value_or(Version{.url = m_url});
    // Without a tag nobody can say that the rest is of the same file.
    if (!m_version.validator.isEmpty())
        m_resumedAt = QFileInfo(system(m_partialPath)).size();
}

// Takes the partial file for that name, unless it is of another address or being written by another download:
// such files are left alone.
bool FileDownload::usePartial(const QString &name)
{
    m_partialPath = name + partialSuffix;
    m_versionPath = name + versionSuffix;
    m_lock = std::make_unique<QLockFile>(system(m_partialPath) + ".lock"_L1);
    m_lock->setStaleLockTime(0);
    if (!m_lock->tryLock(0) && m_lock->error() == QLockFile::LockFailedError)
        return false;
    if (const std::optional<Version> version = storedVersion())
        return version->url == m_url;
    return !QFileInfo::exists(system(m_partialPath)) && !QFileInfo::exists(system(m_versionPath));
}

std::optional<FileDownload::Version> FileDownload::storedVersion() const
{
    QFile file(system(m_versionPath));
    constexpr qint64 longest = qint64(64) * 1024; // bytes
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject fields = QJsonDocument::fromJson(file.read(longest)).object();
    const QString url = fields.value(urlField).toString();
    if (url.isEmpty())
        return std::nullopt;
    return Version{.url = url,
        .validator = fields.value(validatorField).toString().toLatin1(),
        .size = fields.value(sizeField).toInteger(-1)};
}

bool FileDownload::storeVersion()
{
    const QJsonObject fields{{urlField, m_version.url},
        {validatorField, QString::fromLatin1(m_version.validator)}, {sizeField, m_version.size}};
    const QByteArray bytes = QJsonDocument(fields).toJson(QJsonDocument::Compact);
    QFile file(system(m_versionPath));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
}

void FileDownload::send()
{
    HttpExchange::Request request{.url = addressOf(m_url), .headers = {{"Accept-Encoding", "identity"}}};
    request.silence = patience;
    if (m_resumedAt > 0) {
        request.headers.emplace_back("Range", "bytes=" + QByteArray::number(m_resumedAt) + '-');
        request.headers.emplace_back("If-Range", m_version.validator);
    }
    m_exchange.start(request);
}

void FileDownload::onAnswer()
{
    const int status = m_exchange.answer().status();
    const bool isPart = status == partialContent || status == rangeNotSatisfiable;
    if (m_resumedAt > 0 && isPart && !goesOn()) {
        m_resumedAt = 0; // what is there is of another file: once more, from the beginning
        send();
        return;
    }
    if (status != ok && !(m_resumedAt > 0 && isPart))
        return end(DownloadStatus::BadAnswer, answerWords(status));
    if (status == rangeNotSatisfiable)
        return complete(); // goesOn() has seen that everything is there
    if (!openPartial(status == ok))
        return end(DownloadStatus::NoFile, tr("The file cannot be written."));
    m_done = m_resumedAt;
    m_sinceStart.start();
    Q_EMIT Status(DownloadStatus::Receiving);
}

// Whether the answer to a request for the rest is that rest, of the same file.
bool FileDownload::goesOn()
{
    const HttpAnswer &answer = m_exchange.answer();
    const QByteArray header = answer.header("Content-Range");
    if (answer.status() == rangeNotSatisfiable)
        return m_version.size == m_resumedAt && header == "bytes */" + QByteArray::number(m_resumedAt);
    const std::optional<Range> range = contentRange(header);
    const QByteArray tag = answer.header("ETag");
    const bool isSameSize = range && (range->size < 0 || m_version.size < 0 || range->size == m_version.size);
    if (!range || range->first != m_resumedAt || !isSameSize || tag != m_version.validator)
        return false;
    if (m_version.size < 0)
        m_version.size = range->size;
    // All that was asked for, not the beginning of it.
    return m_version.size < 0 || range->last == m_version.size - 1;
}

// `anew`: the answer brings a file from its beginning. What was there goes before it is noted of which
// version the rest will be, so that no end in between makes one file of two.
bool FileDownload::openPartial(bool anew)
{
    m_partial.setFileName(system(m_partialPath));
    if (!m_partial.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;
    if (!anew)
        return m_partial.seek(m_resumedAt);
    if (!m_partial.resize(0))
        return false;
    m_resumedAt = 0;
    m_version = {.url = m_url,
        .validator = strongTag(m_exchange.answer()),
        .size = m_exchange.answer().length().value_or(-1)};
    return storeVersion();
}

void FileDownload::onPiece(const QByteArray &piece)
{
    if (m_partial.write(piece) != piece.size())
        return end(DownloadStatus::NoFile, tr("There is no room left on the disk."));
    m_done += piece.size();
    m_received += piece.size();
    const double seconds = static_cast<double>(m_sinceStart.elapsed()) / 1000;
    if (seconds > 0)
        m_speed = byteSizeText(static_cast<double>(m_received) / seconds);
    const bool isKnown = m_version.size > 0;
    const auto percent = isKnown
        ? static_cast<float>(static_cast<double>(m_done) / static_cast<double>(m_version.size) * 100)
        : -1.0F;
    Q_EMIT Progress(percent, isKnown ? byteSizeText(static_cast<double>(m_version.size)) : QString(),
        byteSizeText(static_cast<double>(m_done)), m_speed);
}

void FileDownload::onEnded(HttpExchange::End how)
{
    if (how == HttpExchange::End::Complete && (m_version.size < 0 || m_done == m_version.size))
        return complete();
    const bool isAddress = how != HttpExchange::End::NoAddress && how != HttpExchange::End::Unreachable
        && how != HttpExchange::End::Untrusted;
    const auto words = how == HttpExchange::End::Complete ? HttpExchange::End::Cut : how;
    end(isAddress ? DownloadStatus::Failed : DownloadStatus::NotSent,
        wordsFor(endWords, static_cast<int>(words)));
}

void FileDownload::complete()
{
    m_exchange.stop();
    m_partial.close();
    const QString name
        = firstName(m_target, [this](const QString &path) { return !QFileInfo::exists(system(path)); });
    if (!QFile::rename(system(m_partialPath), system(name)))
        return end(DownloadStatus::Failed, tr("The finished file could not be put in its place."));
    QFile::remove(system(m_versionPath));
    end(DownloadStatus::Complete, {});
}

void FileDownload::end(DownloadStatus status, const QString &problem)
{
    m_exchange.stop();
    m_partial.close();
    m_lock.reset();
    m_busy = false;
    m_problem = problem;
    Q_EMIT Status(status);
}

} // namespace plum
