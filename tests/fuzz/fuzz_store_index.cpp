#include "signing/trusted_store.h"
#include "store_index/store_index.h"

#include <cstdint>
#include <cstdlib>

using namespace plum;

namespace {

// Whatever is read is written so that the same is read again.
template <typename File> void readAndWrite(const QByteArray &json)
{
    const auto file = File::parse(json);
    if (!file)
        return;
    const QByteArray written = file->toJson();
    const auto again = File::parse(written);
    if (!again || again->toJson() != written)
        std::abort();
}

// A reader who is handed this for every file believes nothing, asks for bounded files and comes to an end.
void handOut(const QByteArray &bytes, const TrustedStore::Files &remembered)
{
    constexpr int handedOut = 3;
    constexpr int mostFiles = handedOut + 2;
    TrustedStore store({PublicKey()}, remembered, QDateTime(QDate(2026, 11, 21), QTime(0, 0), Qt::UTC));
    for (int files = 0; const auto wanted = store.wanted(); ++files) {
        if (files > mostFiles || wanted->largest > qint64(64) << 20)
            std::abort();
        if (files < handedOut)
            store.take(bytes);
        else
            store.missing();
    }
    if (store.fault() == IndexFault::None || !store.index().isEmpty())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QByteArray content = bytes;
    if (const auto file = SignedFile::parse(bytes)) {
        if (file->toBytes() != bytes)
            std::abort();
        content = file->content;
    }
    readAndWrite<RootFile>(content);
    readAndWrite<StoreIndex>(content);
    readAndWrite<TimestampFile>(content);
    handOut(bytes, {});
    handOut({}, {bytes, bytes, bytes});
    return 0;
}
