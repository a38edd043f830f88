#include "check/edition1/script_line.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

std::optional<ScriptLine> ScriptLine::read(const QString &text, int number)
{
    if (text.isEmpty() || text.startsWith("//"_L1))
        return {};
    ScriptLine line{.number = number};
    QString head = text;
    const qsizetype blank = text.indexOf(u' ');
    line.startsWithBlank = blank == 0;
    if (blank >= 1) {
        head = text.first(blank);
        line.arguments = Arguments{text.sliced(blank + 1), static_cast<int>(blank + 2)};
    }
    const qsizetype dot = head.indexOf(u'.');
    line.hasDot = dot >= 0;
    if (!line.hasDot) {
        line.nameSpace = head;
        return line;
    }
    line.nameSpace = head.first(dot);
    line.commandColumn = static_cast<int>(dot + 2);
    const qsizetype second = head.indexOf(u'.', dot + 1);
    line.hasSecondDot = second >= 0;
    line.command = head.sliced(dot + 1, (second < 0 ? head.size() : second) - dot - 1);
    return line;
}

} // namespace plum::edition1
