#include "sheet/compute_sheet.h"

#include "engine/edition2/script_text.h"
#include "engine/editions/later_edition.h"
#include "engine/text_files.h"
#include "sheet/edition1_walk.h"
#include "sheet/edition2_walk.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestScript = qint64(1) << 26; // bytes; nobody writes longer ones

QString utf8OrLatin1(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

// Every piece with its length, so that no two lists of files look alike.
void addTo(QCryptographicHash &hash, const QByteArray &bytes)
{
    hash.addData(QByteArray::number(bytes.size()) + ':');
    hash.addData(bytes);
}

std::optional<QByteArray> readFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestScript || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

ComputedSheet computeSheet(const ScriptSource &source, const ScriptVocabulary &vocabulary)
{
    ComputedSheet computed;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    addTo(hash, source.script);
    switch (const int edition = askedEdition(source.script).number; edition) {
    case 1: {
        QString text = source.decode ? source.decode(source.script) : utf8OrLatin1(source.script);
        if (text.startsWith(QChar::ByteOrderMark))
            text.remove(0, 1);
        computed.sheet = edition1::effectsOf(splitLines(text), vocabulary);
        break;
    }
    case 2: {
        const auto load = [&](const QString &file) -> std::optional<QString> {
            const auto bytes = source.load ? source.load(file) : std::nullopt;
            addTo(hash, file.toUtf8());
            addTo(hash, bytes ? "+" + *bytes : QByteArray("-"));
            return bytes ? std::optional(edition2::decode(*bytes).text) : std::nullopt;
        };
        computed.sheet
            = edition2::effectsOf(edition2::decode(source.script).text, vocabulary, load, computed.problem);
        break;
    }
    default:
        computed.problem = u"it asks for edition %1 of the language"_s.arg(edition);
    }
    computed.contentHash = hash.result().toHex();
    return computed;
}

std::optional<ScriptSource> sourceIn(const QString &folder, const QString &name)
{
    const auto load = [folder](const QString &file) {
        return readFile(folder + u'/' + QString(file).replace(u'\\', u'/'));
    };
    const std::optional<QByteArray> script = load(name);
    if (!script)
        return {};
    return ScriptSource{.script = *script, .load = load};
}

std::optional<ComputedSheet> computeSheetOf(const QString &folder, const ScriptVocabulary &vocabulary,
    const std::function<QString(const QByteArray &bytes)> &decode)
{
    std::optional<ScriptSource> source = sourceIn(folder);
    if (!source)
        return {};
    source->decode = decode;
    return computeSheet(*source, vocabulary);
}

} // namespace plum
