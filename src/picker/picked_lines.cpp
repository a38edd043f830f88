#include "picker/picked_lines.h"

#include <QCoreApplication>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

QString pair(QPoint point)
{
    return u"%1:%2"_s.arg(point.x()).arg(point.y());
}

QString colourText(QRgb colour)
{
    return u"%1"_s.arg(colour & 0xffffff, 6, 16, QChar(u'0')).toUpper();
}

QString translated(const char *text)
{
    return QCoreApplication::translate("plum::Picker", text);
}

// Edition 1 has no bare words.
QString command(const QString &head, const QStringList &values, Edition edition)
{
    QStringList written;
    for (const QString &value : values)
        written += edition == Edition::One ? u'"' + value + u'"' : value;
    return head + u' ' + written.join(u',');
}

} // namespace

PickedPoint pointIn(const DesktopView &view, QPoint point)
{
    PickedPoint picked{.point = point, .colour = view.colourAt(point)};
    if (const DesktopView::SeenWindow *window = view.windowAt(point))
        picked.window = *window;
    return picked;
}

QStringList factsOf(const PickedPoint &picked)
{
    QStringList facts{translated(QT_TRANSLATE_NOOP("plum::Picker", "Point %1")).arg(pair(picked.point)),
        translated(QT_TRANSLATE_NOOP("plum::Picker", "Colour %1")).arg(colourText(picked.colour))};
    if (!picked.window)
        return facts << translated(QT_TRANSLATE_NOOP("plum::Picker", "No window"));
    const DesktopView::SeenWindow &window = *picked.window;
    const QPoint corner = window.rectangle.topLeft();
    facts += translated(QT_TRANSLATE_NOOP("plum::Picker", "Window \"%1\", handle %2"))
                 .arg(window.title, QString::number(window.handle));
    facts += translated(QT_TRANSLATE_NOOP("plum::Picker", "Its corner %1, from there %2"))
                 .arg(pair(corner), pair(picked.point - corner));
    return facts;
}

QStringList linesFor(PickedLine line, const PickedPoint &picked, Edition edition)
{
    const QString move = command(u"mouse.move"_s, {pair(picked.point)}, edition);
    switch (line) {
    case PickedLine::Move:
        return {move};
    case PickedLine::Colour:
        return {command(u"os.find_color"_s, {colourText(picked.colour), {}, {}, u"move"_s}, edition)};
    case PickedLine::Window:
        return {move, command(u"window.get"_s, {u"mouse_window"_s, u"window"_s}, edition)};
    case PickedLine::Picture:
        break;
    }
    return {};
}

QString lineForPicture(const QString &fileName, Edition edition)
{
    const QString path
        = edition == Edition::One ? u"_pfold_\\"_s + fileName : u"\"_pfold_/"_s + fileName + u'"';
    return command(u"os.find_pic"_s, {path, {}, {}, u"move"_s}, edition);
}

} // namespace plum
