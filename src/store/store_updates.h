#pragma once

#include "library/package_record.h"
#include "store/store_addresses.h"
#include "store/store_view.h"
#include "store_index/index_fault.h"
#include "store_index/store_index.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace plum {

class AppFolders;
class Paths;
class TextCodec;
class webbox;
struct InstallOffer;

// An app of which the store has another version than the one that is here.
struct StoreUpdate
{
    QString keyword;
    PackageOrigin present;
    IndexedPackage newest;
};

// What the store's signed index means for the apps that came from it: newer versions, and versions that were
// taken back. While nothing else is going on the index is asked for once a day; between that, what was
// believed last counts.
class StoreUpdates final : public QObject
{
    Q_OBJECT

public:
    struct Needs
    {
        const Paths &paths;
        TextCodec &codec;
        webbox &store;
        StoreAddresses addresses;
        std::function<bool()> isIdle; // no script is running
        // Asks whether to install; calls `install` when the user agrees, and never otherwise.
        std::function<void(const InstallOffer &offer, std::function<void()> install)> ask;
        std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
    };

    explicit StoreUpdates(const Needs &needs);

    // From now on the store is asked, unless `[store] updates=off` stands in options.ini. Nothing is asked
    // for a library without apps of the store.
    void start();

    // Asks now if it is time.
    void askWhenDue();

    const std::vector<StoreUpdate> &pending() const { return m_pending; }

    // The apps of the library that are the store's. Of a store that signs nothing no app says that it came
    // from there: those are all that came as packages.
    std::vector<StoreApp> apps() const;

    // Installs them, one after the other, by an index of this moment. Only one that may do more than the
    // version that is here, or of which that is not known, is asked about.
    void installAll();

    // Why the version of this app was taken back, for a user who has not insisted on it yet; may be empty.
    std::optional<QString> takenBack(const QString &keyword);
    // The user wants that version all the same.
    void insist(const QString &keyword);

Q_SIGNALS:
    void changed(); // how many are pending
    void installed(int apps); // all that could be

private:
    struct Wanted
    {
        QString keyword;
        IndexedPackage package;
    };

    bool isDue() const;
    void take(const StoreIndex &index);
    const std::optional<StoreIndex> &remembered();
    void installPending();
    void installNext();
    QString memoryFile(const QString &name) const;

    Needs m;
    QTimer m_looks;
    QTimer m_again; // while another package is on its way
    std::vector<StoreUpdate> m_pending;
    std::optional<StoreIndex> m_index; // what was believed last
    bool m_hasRead = false;
    std::deque<Wanted> m_wanted; // to be installed
    bool m_isInstalling = false;
    int m_installed = 0;
};

// The updates that `index` has for apps of the store. One that the user has gone back from is none.
std::vector<StoreUpdate> updatesIn(const StoreIndex &index, const AppFolders &folders);

} // namespace plum
