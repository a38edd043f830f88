#include "check/script_text.h"

#include "check/findings/check_words.h"
#include "engine/text_files.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

QString decoded(QByteArrayView bytes, bool &isUtf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    isUtf8 = !decoder.hasError();
    return isUtf8 ? text : QString::fromLatin1(bytes);
}

void judgeLineEnds(const QString &text, ScriptText &script)
{
    static const QRegularExpression bareLineFeed(u"(?<!\\r)\\n"_s);
    const QRegularExpressionMatch match = bareLineFeed.match(text);
    if (!match.hasMatch())
        return;
    const QStringView before = QStringView(text).first(match.capturedStart());
    const int line = static_cast<int>(splitLines(before).size());
    if (script.lines.size() == 1) {
        script.findings += {.line = 1,
            .column = 1,
            .severity = Severity::Error,
            .rule = u"lf-line-ends"_s,
            .message = CheckWords::tr(
                "The lines end in LF alone, so the whole file is one line; save it with CR LF.")};
    } else {
        const qsizetype start = before.lastIndexOf(u'\r') + (before.contains(u'\n') ? 2 : 1);
        script.findings += {.line = std::max(line, 1),
            .column = static_cast<int>(std::max<qsizetype>(match.capturedStart() - start, 0) + 1),
            .severity = Severity::Warning,
            .rule = u"mixed-line-ends"_s,
            .message = CheckWords::tr(
                "A bare LF ends no line here: what follows belongs to the same line; other lines end in "
                "CR LF.")};
    }
}

void judgeEncoding(ScriptText &script)
{
    if (!script.isUtf8 && script.edition.number > 1) {
        script.findings += {.severity = Severity::Error,
            .rule = u"syntax"_s,
            .message = CheckWords::tr("The file is not UTF-8, as scripts of edition %1 are.")
                           .arg(script.edition.number)};
        return;
    }
    if (!script.isUtf8) {
        script.findings += {.severity = Severity::Warning,
            .rule = u"encoding"_s,
            .message = CheckWords::tr(
                "The file is not UTF-8: Linux reads it as GB18030, Windows in its own code page.")};
        return;
    }
    if (script.hasMark || script.edition.number > 1)
        return;
    for (qsizetype line = 0; line < script.lines.size(); ++line) {
        const QString &content = script.lines[line];
        if (content.startsWith("//"_L1))
            continue;
        for (qsizetype at = 0; at < content.size(); ++at) {
            if (content[at].unicode() < 0x80)
                continue;
            script.findings += {.line = static_cast<int>(line + 1),
                .column = static_cast<int>(at + 1),
                .severity = Severity::Hint,
                .rule = u"encoding"_s,
                .message = CheckWords::tr(
                    "Windows reads a file without the mark of UTF-8 in its own code page, where this "
                    "character becomes another.")};
            return;
        }
    }
}

} // namespace

ScriptText ScriptText::read(QByteArrayView bytes)
{
    ScriptText script;
    script.hasMark = bytes.startsWith(utf8Mark);
    const QString text = decoded(script.hasMark ? bytes.sliced(utf8Mark.size()) : bytes, script.isUtf8);
    script.text = text;
    script.edition = askedEdition(bytes.toByteArray());
    if (script.edition.number > 1) {
        script.lines = text.split(u'\n');
        for (QString &line : script.lines) {
            if (line.endsWith(u'\r'))
                line.chop(1);
        }
    } else {
        script.lines = splitLines(text);
        judgeLineEnds(text, script);
    }
    judgeEncoding(script);
    return script;
}

} // namespace plum
