#include "signing/trusted_store.h"

#include "signing/signers.h"
#include "store_index/store_index.h"

#include <QCryptographicHash>

#include <algorithm>

namespace plum {

namespace {

// In bytes. They bound what a server can make a reader fetch.
constexpr qint64 largestRoot = 64 << 10;
constexpr qint64 largestTimestamp = 16 << 10;
constexpr qint64 largestIndex = 64 << 20;

// A store that changes its keys every month gets along with it for 20 years.
constexpr int mostRoots = 256;

QByteArray sha256(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

} // namespace

TrustedStore::TrustedStore(std::vector<PublicKey> builtIn, const Files &remembered, const QDateTime &now)
    : m_builtIn(std::move(builtIn))
    , m_now(now)
{
    if (m_builtIn.empty())
        fail(IndexFault::NotVouched);
    else
        useRemembered(remembered);
}

// What was kept may have been damaged since; then it counts for nothing, and the way begins anew.
void TrustedStore::useRemembered(const Files &remembered)
{
    const auto root = SignedFile::parse(remembered.root);
    const auto keys = root ? RootFile::parse(root->content) : std::nullopt;
    if (!keys || !isSignedFor(*root, keys->root))
        return;
    m_root = keys;
    m_nextRoot = keys->version + 1;
    m_files.root = remembered.root;

    const auto timestamp = SignedFile::parse(remembered.timestamp);
    if (timestamp && isSignedFor(*timestamp, keys->timestamp))
        m_seen = TimestampFile::parse(timestamp->content);
    if (m_seen)
        m_files.timestamp = remembered.timestamp;

    const auto index = SignedFile::parse(remembered.index);
    if (index && isSignedFor(*index, keys->index)) {
        if (const auto parsed = StoreIndex::parse(index->content)) {
            m_seenIndex = parsed->version;
            m_files.index = remembered.index;
        }
    }
}

std::optional<TrustedStore::Wanted> TrustedStore::wanted() const
{
    switch (m_step) {
    case Step::Roots:
        return Wanted{rootFileName(m_nextRoot), largestRoot};
    case Step::Timestamp:
        return Wanted{timestampFileName(), largestTimestamp};
    case Step::Index:
        return Wanted{indexFileName(m_timestamp.indexVersion), m_timestamp.indexSize};
    case Step::Done:
        break;
    }
    return std::nullopt;
}

void TrustedStore::take(const QByteArray &bytes)
{
    const auto file = SignedFile::parse(bytes);
    switch (m_step) {
    case Step::Roots:
        // Many servers send a page for what they do not have.
        if (!SignedFile::claimsToBeOne(bytes))
            endRoots();
        else if (file)
            takeRoot(*file, bytes);
        else
            fail(IndexFault::RootUnsigned);
        break;
    case Step::Timestamp:
        if (file)
            takeTimestamp(*file, bytes);
        else
            fail(IndexFault::Unsigned);
        break;
    case Step::Index:
        if (file)
            takeIndex(*file, bytes);
        else
            fail(IndexFault::Mixed);
        break;
    case Step::Done:
        break;
    }
}

void TrustedStore::missing()
{
    if (m_step == Step::Roots)
        endRoots();
    else
        fail(IndexFault::NotThere);
}

void TrustedStore::tooLarge()
{
    fail(m_step == Step::Index ? IndexFault::Mixed : IndexFault::TooLarge);
}

void TrustedStore::takeRoot(const SignedFile &file, const QByteArray &bytes)
{
    const auto root = RootFile::parse(file.content);
    const bool isNext = root && root->version == m_nextRoot && isSignedFor(file, root->root);
    if (m_root) {
        if (!isNext || !isSignedFor(file, m_root->root)) {
            fail(IndexFault::RootUnsigned);
            return;
        }
        believe(*root, bytes);
    } else if (isNext) {
        // A program that was built after a change of keys knows the new one and passes by those before.
        const RoleKeys all{{m_builtIn.begin(), m_builtIn.end()}, static_cast<int>(m_builtIn.size())};
        if (isSignedFor(file, all))
            believe(*root, bytes);
    }
    ++m_nextRoot;
    if (++m_rootsTaken >= mostRoots)
        endRoots();
}

void TrustedStore::believe(const RootFile &root, const QByteArray &bytes)
{
    // With keys that somebody else had, versions may have been driven up: what they signed counts no more.
    if (m_root && m_root->timestamp != root.timestamp) {
        m_seen.reset();
        m_files.timestamp.clear();
    }
    if (m_root && m_root->index != root.index) {
        m_seen.reset();
        m_seenIndex = 0;
        m_files.timestamp.clear();
        m_files.index.clear();
    }
    m_root = root;
    m_files.root = bytes;
}

void TrustedStore::endRoots()
{
    if (!m_root)
        fail(m_rootsTaken == 0 ? IndexFault::NotThere : IndexFault::NoRoot);
    else if (m_root->expires < m_now)
        fail(IndexFault::RootExpired);
    else
        m_step = Step::Timestamp;
}

void TrustedStore::takeTimestamp(const SignedFile &file, const QByteArray &bytes)
{
    const auto timestamp = TimestampFile::parse(file.content);
    if (!isSignedFor(file, m_root->timestamp))
        fail(IndexFault::Unsigned);
    else if (!timestamp || timestamp->indexSize > largestIndex)
        fail(IndexFault::Damaged);
    else if ((m_seen && timestamp->version < m_seen->version) || timestamp->indexVersion < m_seenIndex)
        fail(IndexFault::Older);
    else if (timestamp->expires < m_now)
        fail(IndexFault::Expired);
    else {
        m_timestamp = *timestamp;
        m_files.timestamp = bytes;
        m_step = Step::Index;
        // It need not come twice.
        if (!m_files.index.isEmpty() && sha256(m_files.index) == timestamp->indexChecksum)
            take(QByteArray(m_files.index));
    }
}

void TrustedStore::takeIndex(const SignedFile &file, const QByteArray &bytes)
{
    const auto index = StoreIndex::parse(file.content);
    if (bytes.size() != m_timestamp.indexSize || sha256(bytes) != m_timestamp.indexChecksum)
        fail(IndexFault::Mixed);
    else if (!isSignedFor(file, m_root->index))
        fail(IndexFault::Unsigned);
    else if (!index)
        fail(IndexFault::Damaged);
    else if (index->version != m_timestamp.indexVersion)
        fail(IndexFault::Mixed);
    // A version is one index, not two.
    else if (index->version == m_seenIndex && bytes != m_files.index)
        fail(IndexFault::Mixed);
    else if (index->expires < m_now)
        fail(IndexFault::Expired);
    else {
        m_files.index = bytes;
        m_step = Step::Done;
    }
}

void TrustedStore::fail(IndexFault fault)
{
    m_fault = fault;
    m_step = Step::Done;
}

QByteArray TrustedStore::index() const
{
    if (m_step != Step::Done || m_fault != IndexFault::None)
        return {};
    const auto file = SignedFile::parse(m_files.index);
    return file ? file->content : QByteArray();
}

} // namespace plum
