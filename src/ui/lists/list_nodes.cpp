#include "ui/lists/list_nodes.h"

#include "ui/lists/keyword_list.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWindow>

#include <unordered_map>

namespace plum {

using namespace Qt::StringLiterals;

namespace {

// One row, by its number: what stands there may change.
class RowNode final : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    RowNode(KeywordList &list, int row)
        : m_list(&list)
        , m_row(row)
    {
    }

    int row() const { return m_row; }

    bool isValid() const override { return m_list && m_row < m_list->model()->rowCount(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_list ? m_list->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override
    {
        return m_list ? QAccessible::queryAccessibleInterface(m_list) : nullptr;
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text which) const override
    {
        if (!isValid())
            return {};
        if (which == QAccessible::Name)
            return keyword();
        return which == QAccessible::Description ? m_list->guideOf(keyword()) : QString();
    }

    void setText(QAccessible::Text, const QString &) override { }

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect row = m_list->visualRect(index());
        return {m_list->viewport()->mapToGlobal(row.topLeft()), row.size()};
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.focusable = true;
        state.invalid = !isValid();
        if (!isValid())
            return state;
        state.selected = m_list->selectionModel()->isSelected(index());
        state.focused = m_list->hasFocus() && m_list->currentIndex().row() == m_row;
        state.invisible = !m_list->isVisible();
        state.offscreen = !m_list->viewport()->rect().intersects(m_list->visualRect(index()));
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {u"run"_s, u"edit"_s, setFocusAction()}; }
    QString localizedActionName(const QString &name) const override
    {
        return name == "run"_L1 ? KeywordList::tr("Run")
            : name == "edit"_L1 ? KeywordList::tr("Edit script")
                                : QAccessibleActionInterface::localizedActionName(name);
    }

    // Not within the request: what runs may take its time, and whoever asks waits for the answer.
    void doAction(const QString &name) override
    {
        if (!isValid())
            return;
        KeywordList *list = m_list;
        const QString keyword = this->keyword();
        if (name == "run"_L1) {
            QMetaObject::invokeMethod(
                list, [list, keyword] { Q_EMIT list->runRequested(keyword); }, Qt::QueuedConnection);
        } else if (name == "edit"_L1) {
            QMetaObject::invokeMethod(
                list, [list, keyword] { Q_EMIT list->scriptRequested(keyword); }, Qt::QueuedConnection);
        } else if (name == setFocusAction()) {
            list->setFocus();
            list->setCurrentIndex(index());
        }
    }

    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QModelIndex index() const { return m_list->model()->index(m_row, 0); }
    QString keyword() const { return index().data().toString(); }

    QPointer<KeywordList> m_list;
    int m_row;
};

class ListNode final : public QAccessibleWidget
{
public:
    explicit ListNode(KeywordList &list)
        : QAccessibleWidget(&list, QAccessible::List)
        , m_list(list)
    {
    }

    ~ListNode() override
    {
        for (const auto &[row, id] : m_rows)
            QAccessible::deleteAccessibleInterface(id);
    }
    Q_DISABLE_COPY_MOVE(ListNode)

    int childCount() const override { return m_list.model() ? m_list.model()->rowCount() : 0; }

    QAccessibleInterface *child(int row) const override
    {
        if (row < 0 || row >= childCount())
            return nullptr;
        const auto known = m_rows.find(row);
        if (known != m_rows.end())
            return QAccessible::accessibleInterface(known->second);
        auto *node = new RowNode(m_list, row);
        m_rows[row] = QAccessible::registerAccessibleInterface(node);
        return node;
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *node = dynamic_cast<const RowNode *>(child);
        return node && node->parent() == this ? node->row() : -1;
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        return child(m_list.indexAt(m_list.viewport()->mapFromGlobal(QPoint(x, y))).row());
    }

    QAccessibleInterface *focusChild() const override
    {
        return m_list.hasFocus() ? child(m_list.currentIndex().row()) : nullptr;
    }

private:
    KeywordList &m_list;
    mutable std::unordered_map<int, QAccessible::Id> m_rows; // those that were asked for
};

QAccessibleInterface *nodeOf(const QString &className, QObject *object)
{
    auto *list = className == "plum::KeywordList"_L1 ? qobject_cast<KeywordList *>(object) : nullptr;
    return list ? new ListNode(*list) : nullptr;
}

} // namespace

void describeLists()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(&nodeOf);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

} // namespace plum
