#include "ui/controls/rich_link.h"

#include "look/theme.h"

#include <QApplication>

namespace plum {

QString richLink(const QString &target, const QString &caption)
{
    return QStringLiteral(" <a href='%1' style='color:%2'>%3</a>")
        .arg(target, Theme::of(QApplication::palette()).accent.name(), caption);
}

} // namespace plum
