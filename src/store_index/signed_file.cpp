#include "store_index/signed_file.h"

#include <algorithm>

namespace plum {

namespace {

constexpr QByteArrayView firstLine("plum-signed 1\n");

} // namespace

QByteArray SignedFile::toBytes() const
{
    QByteArray file = firstLine.toByteArray();
    for (const Signature &each : signatures)
        file += each.key.toHex() + ' ' + each.bytes.toHex() + '\n';
    return file + '\n' + content;
}

bool SignedFile::claimsToBeOne(const QByteArray &file)
{
    return file.startsWith(firstLine);
}

std::optional<SignedFile> SignedFile::parse(const QByteArray &file)
{
    if (!claimsToBeOne(file))
        return std::nullopt;
    SignedFile parsed;
    qsizetype at = firstLine.size();
    for (;;) {
        const qsizetype end = file.indexOf('\n', at);
        if (end < 0)
            return std::nullopt;
        const QByteArray line = file.sliced(at, end - at);
        at = end + 1;
        if (line.isEmpty())
            break;
        const qsizetype blank = line.indexOf(' ');
        if (blank < 0 || parsed.signatures.size() >= mostSignatures)
            return std::nullopt;
        const auto key = PublicKey::fromHex(line.first(blank));
        const auto bytes = exactHex(line.sliced(blank + 1), signatureLength);
        if (!key || !bytes || std::ranges::count(parsed.signatures, *key, &Signature::key) != 0)
            return std::nullopt;
        parsed.signatures.push_back({*key, *bytes});
    }
    parsed.content = file.sliced(at);
    return parsed;
}

} // namespace plum
