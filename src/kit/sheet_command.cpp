#include "kit/sheet_command.h"

#include "kit/option_rows.h"
#include "sheet/compute_sheet.h"
#include "sheet/sheet_json.h"
#include "sheet/sheet_sentences.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>

namespace plum::kit {

using namespace Qt::StringLiterals;

namespace {

constexpr int isDone = 0;
constexpr int isUnusable = 2;

} // namespace

SheetOptions readSheetOptions(const QStringList &arguments, QString &problem)
{
    SheetOptions options;
    const auto takeFormat = [&](const QString &word) {
        options.asJson = word == "json"_L1;
        return options.asJson || word == "text"_L1 ? QString()
                                                   : u"--format takes text or json, not \"%1\""_s.arg(word);
    };
    const FileAndHelp read = readOptions(arguments, {{.name = u"--format"_s, .take = takeFormat}}, problem);
    options.path = read.file;
    options.wantsHelp = read.wantsHelp;
    return options;
}

int printSheet(const SheetOptions &options, const ScriptVocabulary &vocabulary)
{
    const QFileInfo file(options.path);
    const auto source
        = file.isDir() ? sourceIn(file.absoluteFilePath()) : sourceIn(file.absolutePath(), file.fileName());
    if (!source) {
        std::fprintf(stderr, "plumkit: %s cannot be read\n", qUtf8Printable(options.path));
        return isUnusable;
    }
    const ComputedSheet computed = computeSheet(*source, vocabulary);
    if (!computed.problem.isEmpty())
        std::fprintf(stderr, "%s: the script does not run: %s\n", qUtf8Printable(options.path),
            qUtf8Printable(computed.problem));
    const QByteArray output = options.asJson ? QJsonDocument(toJson(computed.sheet)).toJson()
                                             : sentences(computed.sheet).join(u'\n').toUtf8() + '\n';
    std::fwrite(output.constData(), 1, static_cast<std::size_t>(output.size()), stdout);
    return isDone;
}

} // namespace plum::kit
