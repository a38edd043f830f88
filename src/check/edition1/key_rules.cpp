#include "check/edition1/key_rules.h"

#include "check/findings/nearest_word.h"
#include "commands/key_names.h"

namespace plum::edition1 {

using namespace Qt::StringLiterals;

void judgeKey(Report &report, int line, const Value &value)
{
    if (value.kind == Value::Kind::Reference || value.kind == Value::Kind::Template)
        return;
    const QString item = value.isQuoted ? value.text : value.written;
    if (value.kind == Value::Kind::Nothing) {
        report.add(line, value.column, u"key",
            u"%1 without quotes is nothing, and the key without a name is Z; write \"%2\"."_s.arg(item, item.trimmed()));
        return;
    }
    if (item.isEmpty()) {
        report.add(line, value.column, u"key", u"The key without a name is Z."_s);
        return;
    }
    QStringList sent;
    for (const KeyName &row : keycodeasc()) {
        if (!row.returned || row.name.isEmpty())
            continue;
        if (row.name == item.toLower())
            return;
        sent += row.name.toString();
    }
    report.add(line, value.column, u"key",
        item.toLower() == "z"_L1 ? u"\"z\" sends nothing; the key without a name, \"\", is Z."_s
                                 : u"\"%1\" sends nothing.%2"_s.arg(item, didYouMean(item, sent)));
}

} // namespace plum::edition1
