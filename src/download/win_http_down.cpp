#include "download/win_http_down.h"

#include "download/byte_size_text.h"
#include "download/numbered_name.h"
#include "platform/paths.h"
#include "platform/text_codec.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <array>
#include <limits>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// 302 and 416 count as answers: their body is written and the file is renamed as after 200; kept. A 302 that
// says where to is followed before it comes here.
constexpr std::array acceptedStatuses{200, 206, 302, 416};

constexpr auto partialSuffix = ".dl"_L1;
constexpr auto configSuffix = ".dl.cfg"_L1;

QString withoutBlanks(const QString &text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == u' ')
        ++from;
    while (to > from && text[to - 1] == u' ')
        --to;
    return text.sliced(from, to - from);
}

QUrl requestUrl(const QString &url)
{
    constexpr auto scheme = "http://"_L1;
    const QString trimmed = withoutBlanks(url);
    return QUrl(trimmed.startsWith(scheme, Qt::CaseInsensitive) ? trimmed : scheme + trimmed);
}

QString inWorkingFolder(const QString &path)
{
    return QDir::currentPath().replace(u'/', u'\\') + u'\\' + path;
}

} // namespace

WinHttpDown::WinHttpDown(const Paths &paths, TextCodec &codec, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
    , m_codec(codec)
{
    connect(&m_exchange, &HttpExchange::answered, this, &WinHttpDown::onHeaders);
    connect(&m_exchange, &HttpExchange::arrived, this, &WinHttpDown::onData);
    connect(&m_exchange, &HttpExchange::ended, this, &WinHttpDown::onEnded);
}

WinHttpDown::~WinHttpDown()
{
    release();
}

void WinHttpDown::GetStart()
{
    if (m_busy)
        return;
    m_busy = true;
    ++m_transfer;
    if (!tell(DownloadStatus::Sending))
        return;
    if (!choosePartialFile())
        return end(DownloadStatus::NoFile);
    if (!send())
        end(DownloadStatus::NotSent);
}

void WinHttpDown::GetStop()
{
    if (!m_busy)
        return;
    release();
    QFile::remove(m_paths.toSystem(m_configPath));
    end(DownloadStatus::Stopped);
}

void WinHttpDown::GetPause()
{
    if (m_busy)
        end(DownloadStatus::Paused);
}

// False when no name is free.
bool WinHttpDown::choosePartialFile()
{
    m_partialPath = m_target + partialSuffix;
    m_configPath = m_target + configSuffix;
    m_resumePosition = 0;
    const bool hasPartial = exists(m_partialPath);
    const bool hasConfig = exists(m_configPath);
    if (!hasPartial && !hasConfig)
        return true;
    if (!hasPartial || !hasConfig || withoutBlanks(storedUrl()) != withoutBlanks(m_url))
        return useNumberedNames();
    m_resumePosition = static_cast<double>(QFileInfo(m_paths.toSystem(m_partialPath)).size());
    return true;
}

bool WinHttpDown::useNumberedNames()
{
    const auto use = [this](const QString &name) {
        m_partialPath = name + partialSuffix;
        m_configPath = name + configSuffix;
        return !exists(m_partialPath) && !exists(m_configPath);
    };
    // A bare name has no numbered ones, its partial file is plainly ".dl"; kept. When that is taken too, the
    // numbering goes by the name in the working folder, since it would never end otherwise.
    QString target = m_target;
    if (NumberedName(target, 1).isEmpty()) {
        if (use({}))
            return true;
        target = inWorkingFolder(m_target);
    }
    int n = 1;
    while (!use(NumberedName(target, n)) && n < std::numeric_limits<int>::max())
        ++n;
    return n < std::numeric_limits<int>::max();
}

bool WinHttpDown::exists(const QString &path) const
{
    return QFileInfo::exists(m_paths.toSystem(path));
}

QString WinHttpDown::storedUrl() const
{
    QFile file(m_paths.toSystem(m_configPath));
    return file.open(QIODevice::ReadOnly) ? m_codec.fromSystem(file.readAll()) : QString();
}

bool WinHttpDown::send()
{
    const QUrl url = requestUrl(m_url);
    if (!url.isValid() || url.host().isEmpty())
        return false;
    m_received = 0;
    m_total = 0;
    m_wasTooLarge = false;
    m_exchange.start({.url = url,
        .headers = {{"Range", "bytes=" + QByteArray::number(static_cast<qint64>(m_resumePosition)) + '-'},
            {"Accept-Encoding", "identity"}},
        .silence = m_timeout});
    return true;
}

void WinHttpDown::onHeaders()
{
    if (!tell(DownloadStatus::HeadersArrived))
        return;
    const HttpAnswer &answer = m_exchange.answer();
    if (std::ranges::find(acceptedStatuses, answer.status()) == acceptedStatuses.end())
        return end(DownloadStatus::BadAnswer);

    const QByteArray length = answer.header("Content-Length");
    m_total = (length.isEmpty() ? 1 : length.toDouble()) + m_resumePosition;
    if (!openFiles())
        return end(DownloadStatus::NoFile);
    if (isTooLarge())
        return giveUp();
    m_sinceStart.start();
    tell(DownloadStatus::Receiving);
}

bool WinHttpDown::openFiles()
{
    // Reading too is what keeps the files' content: they are not cut off. A shorter address leaves the tail
    // of a longer one in place; kept, the address is then another one and nothing goes on from the file.
    constexpr auto mode = QIODevice::ReadWrite | QIODevice::Unbuffered;
    m_partial.setFileName(m_paths.toSystem(m_partialPath));
    if (!m_partial.open(mode))
        return false;
    QFile config(m_paths.toSystem(m_configPath));
    const QByteArray url = m_codec.toSystem(m_url);
    return config.open(mode) && config.write(url) == url.size()
        && m_partial.seek(static_cast<qint64>(m_resumePosition));
}

void WinHttpDown::setLargest(qint64 bytes)
{
    m_largest = bytes;
    if (m_busy && m_partial.isOpen() && isTooLarge())
        giveUp();
}

// What has arrived, or what the server says will.
bool WinHttpDown::isTooLarge() const
{
    return std::max(m_total, m_resumePosition + m_received) > static_cast<double>(m_largest);
}

// Going on from a file that is too large would end here again.
void WinHttpDown::giveUp()
{
    m_wasTooLarge = true;
    release();
    QFile::remove(m_paths.toSystem(m_partialPath));
    QFile::remove(m_paths.toSystem(m_configPath));
    end(DownloadStatus::Failed);
}

void WinHttpDown::onData(const QByteArray &piece)
{
    if (m_partial.write(piece) != piece.size())
        return end(DownloadStatus::Failed);

    m_received += static_cast<double>(piece.size());
    if (isTooLarge())
        return giveUp();
    const double done = m_resumePosition + m_received;
    const auto percent = static_cast<float>(std::min(done / m_total * 100, 100.0));
    const double seconds = static_cast<double>(m_sinceStart.elapsed()) / 1000;
    if (seconds > 0)
        m_speed = byteSizeText(m_received / seconds);
    Q_EMIT Progress(percent, byteSizeText(m_total), byteSizeText(done), m_speed);
}

void WinHttpDown::onEnded(HttpExchange::End how)
{
    if (how == HttpExchange::End::Complete)
        complete();
    else
        end(DownloadStatus::Failed);
}

void WinHttpDown::complete()
{
    m_partial.close();
    QFile::remove(m_paths.toSystem(m_configPath));
    const bool isRenamed = QFile::rename(m_paths.toSystem(m_partialPath), m_paths.toSystem(finalName()));
    end(isRenamed ? DownloadStatus::Complete : DownloadStatus::Failed);
}

QString WinHttpDown::finalName() const
{
    if (!exists(m_target))
        return m_target;
    // A bare name has no numbered ones, so the working folder's name of it is numbered.
    const bool isBare = NumberedName(m_target, 1).isEmpty();
    const QString target = isBare ? inWorkingFolder(m_target) : m_target;
    int n = 1;
    while (exists(NumberedName(target, n)) && n < std::numeric_limits<int>::max())
        ++n;
    return NumberedName(target, n);
}

bool WinHttpDown::tell(DownloadStatus status)
{
    const QPointer<WinHttpDown> self(this);
    const int transfer = m_transfer;
    Q_EMIT Status(status);
    return self && m_busy && m_transfer == transfer;
}

void WinHttpDown::end(DownloadStatus status)
{
    release();
    m_busy = false;
    Q_EMIT Status(status);
}

// Lets go of the request, from which nothing comes any more, and of the partial file.
void WinHttpDown::release()
{
    m_exchange.stop();
    m_partial.close();
}

} // namespace plum
