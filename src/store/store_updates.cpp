#include "store/store_updates.h"

#include "engine/editions/last_edition.h"
#include "library/app_folders.h"
#include "library/install_offer.h"
#include "library/safe_file.h"
#include "library/settings_file.h"
#include "sheet/sheet_json.h"
#include "store/protocol/package_link.h"
#include "store/webbox.h"
#include "store_index/role_files.h"
#include "store_index/signed_file.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <chrono>

namespace plum {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto firstLook = 1min; // after the launcher's start
constexpr auto eachLook = 10min;
constexpr auto patience = 1s; // with a package that is on its way
constexpr qint64 secondsOfADay = 24 * 60 * 60;

constexpr QLatin1StringView askedFile("asked.txt");
constexpr QLatin1StringView insistedFile("insisted.txt");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::optional<Sheet> sheetOf(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    return document.isObject() ? sheetFromJson(document.object()) : std::nullopt;
}

// What is not known may be more.
bool mayDoMore(const StoreUpdate &update)
{
    const auto present = sheetOf(update.present.sheet);
    const auto newest = sheetOf(update.newest.sheet);
    return !present || !newest || !newest->growthFrom(*present).isEmpty();
}

QStringList keywordsIn(const AppFolders &folders)
{
    return QDir(folders.onDisk(folders.apps())).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

bool hasStoreApp(const AppFolders &folders)
{
    const QStringList keywords = keywordsIn(folders);
    return std::ranges::any_of(keywords,
        [&](const QString &keyword) { return PackageRecord::of(keyword, folders).origin.has_value(); });
}

} // namespace

std::vector<StoreUpdate> updatesIn(const StoreIndex &index, const AppFolders &folders)
{
    std::vector<StoreUpdate> updates;
    for (const QString &keyword : keywordsIn(folders)) {
        const PackageRecord record = PackageRecord::of(keyword, folders);
        if (!record.origin)
            continue;
        // An app that was installed from an older version's place belongs to the newest one of its name.
        const QString name = record.origin->path.section(u'/', -1).chopped(4);
        const IndexedPackage *newest = index.newest(name);
        if (newest == nullptr || newest->checksum == record.origin->checksum
            || index.revocationOf(newest->checksum) != nullptr || newest->edition > lastEdition
            || (record.before && record.before->checksum == newest->checksum))
            continue;
        updates.push_back({keyword, *record.origin, *newest});
    }
    return updates;
}

StoreUpdates::StoreUpdates(const Needs &needs)
    : m(needs)
{
    m_again.setSingleShot(true);
    m_again.setInterval(patience);
    connect(&m.store, &webbox::indexBelieved, this, &StoreUpdates::take);
    connect(&m.store, &webbox::installed, this, [this] {
        if (m_index)
            take(StoreIndex(*m_index));
    });
    connect(&m_looks, &QTimer::timeout, this, &StoreUpdates::askWhenDue);
    connect(&m_again, &QTimer::timeout, this, &StoreUpdates::installNext);
}

QString StoreUpdates::memoryFile(const QString &name) const
{
    const AppFolders folders(m.paths);
    return folders.onDisk(folders.storeMemory() + u'\\' + m.addresses.memoryName() + u'\\' + name);
}

void StoreUpdates::start()
{
    if (!m.addresses.isSigned())
        return;
    QTimer::singleShot(firstLook, this, [this] {
        if (remembered())
            take(StoreIndex(*remembered()));
        askWhenDue();
    });
    m_looks.start(eachLook);
}

bool StoreUpdates::isDue() const
{
    const QString wish = SettingsFile::options(m.paths, m.codec).ReadSetting(u"store"_s, u"updates"_s);
    const QDateTime asked
        = QDateTime::fromString(QString::fromLatin1(contentOf(memoryFile(askedFile))).trimmed(), Qt::ISODate);
    // A clock that was set back does not keep the store from being asked.
    const qint64 since = asked.isValid() ? asked.secsTo(m.now()) : secondsOfADay;
    return wish.compare("off"_L1, Qt::CaseInsensitive) != 0 && (since >= secondsOfADay || since < 0)
        && hasStoreApp(AppFolders(m.paths));
}

void StoreUpdates::askWhenDue()
{
    if (!m.addresses.isSigned() || !m.isIdle() || !isDue())
        return;
    const bool isAsked = m.store.askIndex([](IndexFault, const std::optional<StoreIndex> &) {});
    // A store that does not answer is not asked more often than others.
    if (isAsked)
        replaceFile(memoryFile(askedFile), m.now().toUTC().toString(Qt::ISODate).toLatin1() + '\n');
}

void StoreUpdates::take(const StoreIndex &index)
{
    m_hasRead = true;
    m_index = index;
    m_pending = updatesIn(index, AppFolders(m.paths));
    Q_EMIT changed();
}

// It was verified when it was written.
const std::optional<StoreIndex> &StoreUpdates::remembered()
{
    if (!std::exchange(m_hasRead, true)) {
        const auto file = SignedFile::parse(contentOf(memoryFile(roleName(Role::Index) + ".txt"_L1)));
        if (file)
            m_index = StoreIndex::parse(file->content);
    }
    return m_index;
}

std::vector<StoreApp> StoreUpdates::apps() const
{
    const AppFolders folders(m.paths);
    std::vector<StoreApp> apps;
    for (const QString &keyword : keywordsIn(folders)) {
        const PackageRecord record = PackageRecord::of(keyword, folders);
        if (m.addresses.isSigned() ? !record.origin : record.files.isEmpty())
            continue;
        StoreApp app{.keyword = keyword, .path = keyword + packageEnding};
        if (record.origin) {
            app.version = record.origin->version;
            app.path = record.origin->path;
        }
        const auto update = std::ranges::find(m_pending, keyword, &StoreUpdate::keyword);
        if (update != m_pending.end()) {
            app.newest = update->newest.version;
            app.path = update->newest.path;
        }
        apps.push_back(app);
    }
    return apps;
}

void StoreUpdates::installAll()
{
    m.store.askIndex([this](IndexFault fault, const std::optional<StoreIndex> &index) {
        if (index)
            installPending();
        else
            m.store.sayFault(fault);
    });
}

void StoreUpdates::installPending()
{
    m_installed = 0;
    for (const StoreUpdate &update : m_pending) {
        const Wanted wanted{update.keyword, update.newest};
        if (!mayDoMore(update)) {
            m_wanted.push_back(wanted);
            continue;
        }
        m.ask({.keyword = update.keyword,
                  .origin = m.addresses.packageAt(update.newest.path).toString(),
                  .replaces = true,
                  .version = update.newest.version,
                  .size = update.newest.size,
                  .sheet = update.newest.sheet},
            [this, wanted] {
                m_wanted.push_back(wanted);
                installNext();
            });
    }
    installNext();
}

void StoreUpdates::installNext()
{
    if (m_isInstalling || m_wanted.empty())
        return;
    const Wanted next = m_wanted.front();
    m_isInstalling = m.store.update(next.keyword, next.package, [this](bool isDone) {
        m_isInstalling = false;
        m_installed += isDone ? 1 : 0;
        if (m_wanted.empty())
            Q_EMIT installed(std::exchange(m_installed, 0));
        // Not from within the end of the one before.
        QMetaObject::invokeMethod(this, &StoreUpdates::installNext, Qt::QueuedConnection);
    });
    if (m_isInstalling)
        m_wanted.pop_front();
    else
        m_again.start();
}

std::optional<QString> StoreUpdates::takenBack(const QString &keyword)
{
    if (!m.addresses.isSigned())
        return std::nullopt;
    const auto origin = PackageRecord::of(keyword, AppFolders(m.paths)).origin;
    if (!origin || !remembered())
        return std::nullopt;
    const Revocation *revocation = m_index->revocationOf(origin->checksum);
    if (revocation == nullptr
        || contentOf(memoryFile(insistedFile)).split('\n').contains(origin->checksum.toHex()))
        return std::nullopt;
    return revocation->reason;
}

void StoreUpdates::insist(const QString &keyword)
{
    const auto origin = PackageRecord::of(keyword, AppFolders(m.paths)).origin;
    if (origin)
        replaceFile(
            memoryFile(insistedFile), contentOf(memoryFile(insistedFile)) + origin->checksum.toHex() + '\n');
}

} // namespace plum
