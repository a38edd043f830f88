#pragma once

#include "store_index/index_fault.h"
#include "store_index/role_files.h"
#include "store_index/signed_file.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>
#include <vector>

namespace plum {

// What a reader of a signed store believes, whoever hands it the files: the way from the keys that the
// program was built with to the store's newest index, one file after the other. It neither fetches nor keeps
// anything.
//
// Files are asked for in this order: each newer list of keys until there is none, the timestamp, the index
// that it names. A file is believed with enough signatures of keys that were believed before.
class TrustedStore
{
public:
    // The signed files that were believed last, whole; empty ones where there were none.
    struct Files
    {
        QByteArray root;
        QByteArray timestamp;
        QByteArray index;

        bool operator==(const Files &) const = default;
    };

    // All of `builtIn` have to vouch for the first list of keys.
    TrustedStore(std::vector<PublicKey> builtIn, const Files &remembered, const QDateTime &now);

    // A file that has to be fetched next, below the folder of the packages.
    struct Wanted
    {
        QString name;
        qint64 largest; // bytes; more are no such file
    };

    // Nothing when the index is there, or something was wrong.
    std::optional<Wanted> wanted() const;

    // What came for the file that is wanted. `tooLarge` instead, once more bytes have come than it may have.
    void take(const QByteArray &file);
    void missing();
    void tooLarge();

    bool isDone() const { return m_step == Step::Done; }

    // `None` also while files are wanted.
    IndexFault fault() const { return m_fault; }

    // What may be remembered: newer keys even where something was wrong after them.
    const Files &believed() const { return m_files; }

    // The signed text of the index; empty unless all is well.
    QByteArray index() const;

private:
    enum class Step { Roots, Timestamp, Index, Done };

    void useRemembered(const Files &remembered);
    void takeRoot(const SignedFile &file, const QByteArray &bytes);
    void believe(const RootFile &root, const QByteArray &bytes);
    void endRoots();
    void takeTimestamp(const SignedFile &file, const QByteArray &bytes);
    void takeIndex(const SignedFile &file, const QByteArray &bytes);
    void fail(IndexFault fault);

    const std::vector<PublicKey> m_builtIn;
    const QDateTime m_now;
    Files m_files;
    Step m_step = Step::Roots;
    IndexFault m_fault = IndexFault::None;
    int m_nextRoot = 1;
    int m_rootsTaken = 0;
    std::optional<RootFile> m_root;
    std::optional<TimestampFile> m_seen; // the timestamp that was believed before
    int m_seenIndex = 0; // version of the index that was believed before
    TimestampFile m_timestamp;
};

} // namespace plum
