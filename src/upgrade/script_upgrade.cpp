#include "upgrade/script_upgrade.h"

#include "check/script_text.h"
#include "upgrade/line_upgrade.h"
#include "upgrade/proof.h"

namespace plum::upgrade {

using namespace Qt::StringLiterals;

Upgraded upgrade(QByteArrayView script, const QString &folder, const ScriptVocabulary &vocabulary)
{
    const ScriptText text = ScriptText::read(script);
    if (text.edition.number > 1)
        return {{}, Upgraded::Refusal{1, u"it is of edition %1 already"_s.arg(text.edition.number)}};
    if (!text.isUtf8)
        return {
            {}, Upgraded::Refusal{1, u"it is not UTF-8, as scripts of edition 2 are; save it so first"_s}};

    QStringList lines = text.lines;
    if (!lines.isEmpty() && lines.back().isEmpty())
        lines.removeLast();
    const qsizetype guides = !lines.isEmpty() && lines.front().startsWith("//guide:"_L1) ? 1 : 0;
    QStringList upgraded;
    LineUpgrade line(vocabulary, lines);
    for (qsizetype index = 0; index < lines.size(); ++index) {
        try {
            upgraded += line.upgraded(lines[index], static_cast<int>(index + 1));
            if (index + 1 == lines.size())
                line.finish();
        } catch (const Obstacle &obstacle) {
            return {{}, Upgraded::Refusal{static_cast<int>(index + 1), obstacle.reason}};
        }
    }
    upgraded.insert(guides, u"//edition:2"_s);
    if (const auto difference = differenceBetween(lines, upgraded, folder))
        return {{}, Upgraded::Refusal{std::max(difference->line.value_or(2) - 1, 1), difference->reason}};
    return {upgraded.join(u"\r\n"_s) + u"\r\n"_s, {}};
}

} // namespace plum::upgrade
