#include "ui/controls/rich_link.h"

#include "look/theme.h"

#include <QApplication>

namespace plum {

QString richLink(const QString &target, const QString &caption)
{
    return QStringLiteral(" <a href='%1' style='color:%2'>%3</a>")
        .arg(target, Theme::of(QApplication::palette()).accent.name(), caption);
}

QString targetOf(const QString &richText)
{
    return richText.section(QStringLiteral("<a href='"), 1, 1).section(u'\'', 0, 0);
}

} // namespace plum
