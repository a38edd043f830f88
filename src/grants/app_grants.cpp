#include "grants/app_grants.h"

#include "archive/unzip.h"
#include "guard/granted_limit.h"
#include "platform/text_codec.h"
#include "sheet/sheet_json.h"
#include "sheet/sheet_sentences.h"

#include <QJsonDocument>
#include <QTemporaryDir>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestLookedAt = 1 << 20; // bytes of a package's file that may be a script

QByteArray inJson(const Sheet &sheet)
{
    return QJsonDocument(toJson(sheet)).toJson(QJsonDocument::Compact);
}

// What is no sheet allows nothing.
Sheet sheetFrom(const QByteArray &json)
{
    return sheetFromText(json).value_or(Sheet());
}

} // namespace

AppGrants::AppGrants(Needs needs)
    : m(std::move(needs))
    , m_folders(m.paths)
    , m_file(m.paths)
{
}

const ScriptVocabulary &AppGrants::vocabulary()
{
    if (m_vocabulary.tables().isEmpty())
        m_vocabulary = m.vocabulary();
    return m_vocabulary;
}

QString AppGrants::decoded(const QByteArray &bytes) const
{
    return m.codec.fromSystem(bytes);
}

std::optional<ComputedSheet> AppGrants::computed(const QString &keyword)
{
    const auto folder = m_folders.appOnDisk(keyword);
    return folder ? computeSheetOf(*folder, vocabulary(), [this](const QByteArray &b) { return decoded(b); })
                  : std::nullopt;
}

std::shared_ptr<const RunLimit> AppGrants::limitOf(const QString &keyword, const QByteArray &script)
{
    const std::optional<Grant> grant = m_file.of(keyword);
    if (!grant)
        return nullptr;
    auto limit = std::make_shared<GrantedLimit>();
    limit->keyword = keyword;
    const auto folder = m_folders.appOnDisk(keyword);
    std::optional<ScriptSource> source = folder ? sourceIn(*folder) : std::nullopt;
    if (!source)
        return limit;
    source->script = script;
    source->decode = [this](const QByteArray &bytes) { return decoded(bytes); };
    if (!grant->isTakenBack && contentHashOf(*source, vocabulary()) == grant->contentHash)
        limit->sheet = sheetFrom(grant->sheet);
    return limit;
}

std::optional<AppGrants::Question> AppGrants::questionBefore(const QString &keyword)
{
    const std::optional<Grant> grant = m_file.of(keyword);
    if (!grant)
        return {};
    const std::optional<ComputedSheet> now = computed(keyword);
    if (!now || (!grant->isTakenBack && now->contentHash == grant->contentHash))
        return {};
    const QByteArray sheet = inJson(now->sheet);
    return Question{
        {.keyword = keyword,
            .origin = m_folders.app(keyword),
            .asks = grant->isTakenBack ? InstallOffer::Asks::RunAgain : InstallOffer::Asks::RunChanged,
            .sheet = sheet,
            .granted = grant->isTakenBack ? QByteArray() : grant->sheet},
        {.contentHash = now->contentHash, .sheet = sheet}};
}

void AppGrants::promise(const QString &keyword, const QByteArray &sheet)
{
    if (sheet.isEmpty())
        m_promises.remove(keyword);
    else
        m_promises.insert(keyword, sheet);
}

bool AppGrants::arrive(const QString &keyword, const QString &systemFolder)
{
    const auto now = computeSheetOf(
        systemFolder, vocabulary(), [this](const QByteArray &bytes) { return decoded(bytes); });
    Grant grant;
    if (now)
        grant = {.contentHash = now->contentHash, .sheet = inJson(now->sheet)};
    QByteArray agreed = m_promises.take(keyword);
    if (agreed.isEmpty()) {
        agreed = granted(keyword);
        const std::optional<Grant> before = m_file.of(keyword);
        grant.isTakenBack = before && before->isTakenBack;
    }
    // Granted is what was agreed to, now or for the version before. Of no script in particular, so that the
    // next run asks about the rest.
    if (now && !agreed.isEmpty() && !now->sheet.growthFrom(sheetFrom(agreed)).isEmpty())
        grant = {.contentHash = {}, .sheet = agreed, .isTakenBack = grant.isTakenBack};
    return m_file.set(keyword, grant);
}

QByteArray AppGrants::sheetOfPackage(const QString &path)
{
    const QTemporaryDir folder;
    Unzip archive(m.paths, m.codec);
    if (!folder.isValid() || !archive.Init(path))
        return {};
    std::vector<bool> isLookedAt(size_t(archive.Count()));
    for (int i = 0; i < archive.Count(); ++i)
        isLookedAt[size_t(i)] = archive.EntryInfo(i).uncompressedSize <= largestLookedAt;
    if (!archive.unzip(folder.path(), isLookedAt))
        return {};
    const auto sheet = computeSheetOf(
        folder.path(), vocabulary(), [this](const QByteArray &bytes) { return decoded(bytes); });
    return sheet ? inJson(sheet->sheet) : QByteArray();
}

QByteArray AppGrants::granted(const QString &keyword) const
{
    const std::optional<Grant> grant = m_file.of(keyword);
    return grant && !grant->isTakenBack ? grant->sheet : QByteArray();
}

AppGrants::Told AppGrants::told(const QString &keyword)
{
    const std::optional<Grant> grant = m_file.of(keyword);
    if (grant)
        return {sentences(sheetFrom(grant->sheet)), true, grant->isTakenBack};
    const std::optional<ComputedSheet> now = computed(keyword);
    return {now ? sentences(now->sheet) : QStringList(), false, false};
}

void AppGrants::takeBack(const QString &keyword)
{
    std::optional<Grant> grant = m_file.of(keyword);
    if (!grant)
        return;
    grant->isTakenBack = true;
    m_file.set(keyword, *grant);
}

} // namespace plum
