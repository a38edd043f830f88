#include "look/window_nodes.h"

#include "look/borderless_window.h"

#include <QAbstractScrollArea>
#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>
#include <QMenu>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

constexpr char decoration[] = "decoration";

// There for the eye alone, or with nothing to say at the moment.
bool isMute(const QWidget &widget)
{
    const auto *label = qobject_cast<const QLabel *>(&widget);
    return widget.property(decoration).toBool() || (label && label->text().isEmpty());
}

// A window, or a panel that only holds other controls.
class ContainerNode final : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return static_cast<int>(shown().size()); }

    QAccessibleInterface *child(int index) const override
    {
        const QWidgetList widgets = shown();
        return index >= 0 && index < widgets.size() ? QAccessible::queryAccessibleInterface(widgets.at(index))
                                                    : nullptr;
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child ? static_cast<int>(shown().indexOf(qobject_cast<QWidget *>(child->object()))) : -1;
    }

private:
    QWidgetList shown() const
    {
        QWidgetList widgets;
        for (QWidget *each : widget()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            if (!each->isWindow() && !each->isHidden() && !isMute(*each))
                widgets += each;
        }
        // Qt lists no pop-up windows; a menu belongs to the window that it was opened from.
        if (widget()->isWindow() && role() == QAccessible::Window) {
            for (QWidget *each : QApplication::topLevelWidgets()) {
                if (each->isVisible() && qobject_cast<QMenu *>(each))
                    widgets += each;
            }
        }
        return widgets;
    }
};

QAccessible::Role roleOf(const QWidget &window)
{
    switch (window.windowType()) {
    case Qt::Dialog:
        return QAccessible::Dialog;
    case Qt::ToolTip:
        return QAccessible::AlertMessage;
    default:
        return QAccessible::Window;
    }
}

QAccessibleInterface *nodeOf(const QString &className, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget)
        return nullptr;
    if (className == "plum::BorderlessWindow"_L1)
        return new ContainerNode(widget, roleOf(*widget));
    const bool isPanel = (className == "QWidget"_L1 || className == "QStackedWidget"_L1)
        && !widget->isWindow() && qobject_cast<BorderlessWindow *>(widget->window())
        && !qobject_cast<QAbstractScrollArea *>(widget->parentWidget());
    return isPanel ? new ContainerNode(widget, QAccessible::Grouping) : nullptr;
}

} // namespace

void describeWindows()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(&nodeOf);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void markAsDecoration(QWidget &widget)
{
    widget.setProperty(decoration, true);
}

} // namespace plum
