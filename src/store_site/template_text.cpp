#include "template_text.h"

#include <QRegularExpression>

namespace plum {

QString fillTemplate(const QString &text, const TemplateValues &values)
{
    // One pass: what a value holds is never taken for a place.
    static const QRegularExpression place(QStringLiteral("\\{\\{(\\{)?(\\w+)(?(1)\\})\\}\\}"));
    QString filled;
    qsizetype from = 0;
    for (QRegularExpressionMatchIterator each = place.globalMatch(text); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        const auto value = values.constFind(match.captured(2));
        if (value == values.cend())
            continue;
        filled += QStringView(text).sliced(from, match.capturedStart() - from);
        filled += match.hasCaptured(1) ? *value : value->toHtmlEscaped();
        from = match.capturedEnd();
    }
    filled += QStringView(text).sliced(from);
    return filled;
}

} // namespace plum
