#include "sheet/compute_sheet.h"

#include "engine/edition2/program.h"
#include "engine/edition2/script_text.h"
#include "engine/editions/later_edition.h"
#include "engine/editions/reason.h"
#include "engine/text_files.h"
#include "sheet/edition1_walk.h"
#include "sheet/edition2_walk.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace plum {

namespace {

constexpr qint64 largestScript = qint64(1) << 26; // bytes; nobody writes longer ones

QString utf8OrLatin1(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

std::optional<QByteArray> readFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestScript || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

// Reads what the script uses through `source`, and adds it to the hash.
class HashedFiles
{
public:
    explicit HashedFiles(const ScriptSource &source)
        : m_source(source)
        , m_hash(QCryptographicHash::Sha256)
    {
        add(source.script);
    }

    std::optional<QString> load(const QString &file)
    {
        const auto bytes = m_source.load ? m_source.load(file) : std::nullopt;
        add(file.toUtf8());
        add(bytes ? "+" + *bytes : QByteArray("-"));
        return bytes ? std::optional(edition2::decode(*bytes).text) : std::nullopt;
    }

    QByteArray result() const { return m_hash.result().toHex(); }

private:
    // Every piece with its length, so that no two lists of files look alike.
    void add(const QByteArray &bytes)
    {
        m_hash.addData(QByteArray::number(bytes.size()) + ':');
        m_hash.addData(bytes);
    }

    const ScriptSource &m_source;
    QCryptographicHash m_hash;
};

} // namespace

ComputedSheet computeSheet(const ScriptSource &source, const ScriptVocabulary &vocabulary)
{
    ComputedSheet computed;
    HashedFiles files(source);
    switch (const int edition = askedEdition(source.script).number; edition) {
    case 1: {
        QString text = source.decode ? source.decode(source.script) : utf8OrLatin1(source.script);
        if (text.startsWith(QChar::ByteOrderMark))
            text.remove(0, 1);
        computed.sheet = edition1::effectsOf(splitLines(text), vocabulary);
        break;
    }
    case 2:
        computed.sheet = edition2::effectsOf(
            edition2::decode(source.script).text, vocabulary,
            [&files](const QString &file) { return files.load(file); }, computed.problem);
        break;
    default:
        computed.problem = Reason::tr("it asks for edition %1 of the language").arg(edition);
    }
    computed.contentHash = files.result();
    return computed;
}

QByteArray contentHashOf(const ScriptSource &source, const ScriptVocabulary &vocabulary)
{
    HashedFiles files(source);
    if (askedEdition(source.script).number == 2) {
        edition2::link({}, edition2::decode(source.script).text,
            {vocabulary, [](const QString &) -> Handler * { return nullptr; },
                [&files](const QString &file) { return files.load(file); }});
    }
    return files.result();
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
