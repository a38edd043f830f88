#include "engine/editions/script_error.h"

#include "engine/editions/mistake_words.h"

#include <QStringList>

namespace plum {

using namespace Qt::StringLiterals;

QString ScriptMistake::toText() const
{
    return u"%1:%2:%3: %4"_s.arg(file).arg(line).arg(column).arg(reason);
}

ScriptError::ScriptError(QString app, QList<ScriptMistake> mistakes, bool gaveUp)
    : m_app(std::move(app))
    , m_mistakes(std::move(mistakes))
    , m_gaveUp(gaveUp)
{
}

QString ScriptError::toText() const
{
    QStringList lines;
    for (const ScriptMistake &mistake : m_mistakes) {
        lines += MistakeWords::tr("%1, line %2, column %3: %4")
                     .arg(m_app)
                     .arg(mistake.line)
                     .arg(mistake.column)
                     .arg(mistake.reason);
    }
    return lines.join(u'\n');
}

} // namespace plum
