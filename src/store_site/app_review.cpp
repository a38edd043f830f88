#include "app_review.h"

#include "check/finding_formats.h"
#include "check/script_check.h"
#include "engine/editions/later_edition.h"
#include "published_app.h"
#include "recording/script_bench.h"
#include "sheet/compute_sheet.h"
#include "sheet/sheet_json.h"
#include "sheet/sheet_sentences.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>

namespace plum {

namespace {

constexpr QLatin1StringView scriptEnding(".wf");

} // namespace

// The language is known by the tables of an engine. This one acts on nothing.
struct AppReview::Parts
{
    recording::ScriptBench engine;
    ScriptVocabulary vocabulary = engine.system.vocabulary();
    ScriptCheck check{vocabulary};
};

AppReview::AppReview()
    : m(std::make_unique<Parts>())
{
}

AppReview::~AppReview() = default;

QString AppReview::review(const QString &folder, PublishedApp &app, bool &hasError) const
{
    const QDir root(QDir(folder).absolutePath());
    QList<CheckedFile> checked;
    for (const QString &name : std::as_const(app.package.files)) {
        QFile file(root.filePath(name));
        if (!name.endsWith(scriptEnding) || !file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray script = file.readAll();
        app.edition = std::max(app.edition, askedEdition(script).number);
        Findings findings = m->check.check(script, root.path());
        findings.removeIf([](const Finding &finding) { return finding.severity == Severity::Hint; });
        hasError = hasError || std::ranges::count(findings, Severity::Error, &Finding::severity) != 0;
        checked += CheckedFile{QDir(folder).filePath(name), findings};
    }
    if (const auto computed = computeSheetOf(root.path(), m->vocabulary);
        computed && computed->problem.isEmpty()) {
        app.sheet = QJsonDocument(toJson(computed->sheet)).toJson(QJsonDocument::Compact);
        app.sheetSentences = sentences(computed->sheet);
    }
    return findingsAsText(checked);
}

} // namespace plum
