#include "look/placeholder_ink.h"

#include "look/theme.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace plum {

namespace {

// The style sets the palette anew whenever the widget is polished.
class PlaceholderInk final : public QObject
{
public:
    explicit PlaceholderInk(QWidget &entry)
        : QObject(&entry)
        , m_entry(entry)
    {
        entry.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Polish:
        case QEvent::PaletteChange:
        case QEvent::StyleChange:
        case QEvent::Show:
            apply();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void apply()
    {
        const QColor ink = Theme::of(QApplication::palette()).quiet;
        QPalette palette = m_entry.palette();
        if (palette.color(QPalette::PlaceholderText) == ink)
            return;
        palette.setColor(QPalette::PlaceholderText, ink);
        m_entry.setPalette(palette);
    }

    QWidget &m_entry;
};

} // namespace

void keepPlaceholderReadable(QWidget &entry)
{
    new PlaceholderInk(entry);
}

} // namespace plum
