#include "tree/accessible_tree.h"

#include "tree/tree_view.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>
#include <memory>

namespace tree {

namespace {

QAccessibleInterface *interfaceOf(const TreeView &view)
{
    return QAccessible::queryAccessibleInterface(const_cast<TreeView *>(&view));
}

// One row. It stays with its node, wherever that goes.
class Row : public QAccessibleInterface,
            public QAccessibleTableCellInterface,
            public QAccessibleActionInterface
{
public:
    Row(TreeView &view, const QModelIndex &node) : view_(view), node_(node) { }

    bool isValid() const override { return node_.isValid(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return view_.window()->windowHandle(); }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override { return interfaceOf(view_); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override { }
    QAccessible::Role role() const override { return QAccessible::TreeItem; }

    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name)
            return {};
        const QString hint = node_.data(TreeModel::HintRole).toString();
        return hint.isEmpty() ? node_.data().toString() : hint;
    }

    QRect rect() const override
    {
        const QRect place = view_.visualRect(node_);
        return place.isNull() ? QRect() : QRect(view_.viewport()->mapToGlobal(place.topLeft()), place.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.focusable = true;
        state.selected = isSelected();
        state.focused = view_.hasFocus() && view_.currentIndex() == node_;
        state.expandable = node_.isValid() && node_.model()->hasChildren(node_);
        state.expanded = state.expandable && view_.isExpanded(node_);
        state.collapsed = state.expandable && !view_.isExpanded(node_);
        state.offscreen = !view_.visualRect(node_).intersects(view_.viewport()->rect());
        state.invisible = state.offscreen;
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface *>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface *>(this);
        return nullptr;
    }

    bool isSelected() const override { return view_.selectionModel()->isSelected(node_); }
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return 0; }
    int rowIndex() const override { return view_.positionOf(node_); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override { return {setFocusAction(), toggleAction()}; }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }
    void doAction(const QString &action) override
    {
        if (!node_.isValid())
            return;
        if (action == setFocusAction())
            view_.setCurrentIndex(node_);
        else if (action == toggleAction())
            view_.setExpanded(node_, !view_.isExpanded(node_));
    }

private:
    TreeView &view_;
    QPersistentModelIndex node_;
};

class Rows : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit Rows(TreeView &view) : QAccessibleWidget(&view, QAccessible::Tree), view_(view) { }
    ~Rows() override { forget(true); }
    Rows(const Rows &) = delete;
    Rows &operator=(const Rows &) = delete;

    int childCount() const override { return view_.shownRows(); }
    QAccessibleInterface *child(int index) const override { return rowOf(view_.shownRow(index)); }
    QAccessibleInterface *focusChild() const override { return rowOf(view_.currentIndex()); }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        return rowOf(view_.indexAt(view_.viewport()->mapFromGlobal(QPoint(x, y))));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *row = dynamic_cast<const Row *>(child);
        return row ? row->rowIndex() : -1;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int) const override { return child(row); }
    int selectedCellCount() const override { return int(selectedRows().size()); }
    QList<QAccessibleInterface *> selectedCells() const override
    {
        QAccessibleInterface *selected = focusChild();
        return selected ? QList<QAccessibleInterface *>{selected} : QList<QAccessibleInterface *>();
    }
    QString columnDescription(int) const override { return {}; }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return selectedCellCount(); }
    int columnCount() const override { return 1; }
    int rowCount() const override { return childCount(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override
    {
        const int row = view_.positionOf(view_.currentIndex());
        return row < 0 ? QList<int>() : QList<int>{row};
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int row) override
    {
        view_.setCurrentIndex(view_.shownRow(row));
        return isRowSelected(row);
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; } // some node is always selected
    bool unselectColumn(int) override { return false; }

    void modelChange(QAccessibleTableModelChangeEvent *event) override
    {
        forget(event->modelChangeType() == QAccessibleTableModelChangeEvent::ModelReset);
    }

private:
    QAccessibleInterface *rowOf(const QModelIndex &node) const
    {
        if (!node.isValid())
            return nullptr;
        const QPersistentModelIndex key(node);
        const auto known = ids_.constFind(key);
        if (known != ids_.constEnd())
            return QAccessible::accessibleInterface(*known);
        auto row = std::make_unique<Row>(view_, node);
        QAccessibleInterface *made = row.get();
        ids_.insert(key,
                    QAccessible::registerAccessibleInterface(row.release())); // which owns it from now on
        return made;
    }

    void forget(bool all)
    {
        for (auto at = ids_.begin(); at != ids_.end();) {
            if (!all && at.key().isValid()) {
                ++at;
                continue;
            }
            QAccessible::deleteAccessibleInterface(*at);
            at = ids_.erase(at);
        }
    }

    TreeView &view_;
    mutable QHash<QPersistentModelIndex, QAccessible::Id> ids_; // of the rows asked for so far
};

QAccessibleInterface *describe(const QString &, QObject *object)
{
    auto *view = qobject_cast<TreeView *>(object);
    return view ? new Rows(*view) : nullptr; // the caller owns it
}

} // namespace

void describeToAccessibility() { QAccessible::installFactory(&describe); }

} // namespace tree
