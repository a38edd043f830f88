#pragma once

#include "download/download_status.h"
#include "store_index/index_fault.h"
#include "store_index/public_key.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <memory>
#include <vector>

namespace plum {

class Paths;
class TextCodec;

// A store whose index is signed.
struct SignedStore
{
    QUrl base; // the folder of the packages
    std::vector<PublicKey> keys; // all of them have to vouch for the store's own
    QString remembered; // folder of the system for what was believed last
};

// What the store fetches: one package at a time, and the store's index. Everything is reported from the
// event loop.
class StoreTransfers : public QObject
{
    Q_OBJECT

public:
    // The downloader `WinHttpDown1`: its target and address, its start, its busy state.
    virtual void setTarget(const QString &path) = 0;
    virtual void setUrl(const QString &url) = 0;
    virtual void GetStart() = 0;

    // More bytes than these are no package: the transfer fails. May be set while it runs.
    virtual void setLargest(qint64 bytes) = 0;
    virtual bool wasTooLarge() const = 0; // the last one, which has failed

    virtual bool isBusy() const = 0;

    // Fetches a small text, in 15 seconds at most; an earlier one that is still under way is forgotten.
    virtual void fetchIndex(const QUrl &address) = 0;

    // Fetches whatever it takes to know the newest index of this store, in 15 seconds at most, and remembers
    // what it believes. One at a time.
    virtual void fetchSignedIndex(const SignedStore &store) = 0;

    // Waits no longer for an index: one that is still under way could not be had.
    virtual void endIndex() = 0;

Q_SIGNALS:
    // Those of the downloader: its state; 0 to 100 and three texts.
    void Status(plum::DownloadStatus status);
    void Progress(float percent, const QString &total, const QString &done, const QString &speed);

    // Empty when the index could not be had.
    void indexArrived(const QByteArray &index);

    // The signed text of the index; empty with a fault.
    void signedIndexArrived(plum::IndexFault fault, const QByteArray &index);
};

// What the module `plum-packages` exports.
class StoreModule
{
public:
    virtual ~StoreModule() = default;

    virtual std::unique_ptr<StoreTransfers> createTransfers(const Paths &paths, TextCodec &codec) = 0;
};

} // namespace plum

Q_DECLARE_INTERFACE(plum::StoreModule, "plum.StoreModule/1")
