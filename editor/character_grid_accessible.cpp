#include "editor/character_grid_accessible.h"

#include "editor/character_grid.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <array>

namespace editor {

namespace {

class CellAccessible : public QAccessibleInterface
{
public:
    CellAccessible(CharacterGrid &grid, int index) : grid_(&grid), index_(index) { }

    bool isValid() const override { return !grid_.isNull(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return grid_ ? grid_->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(grid_); }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    void setText(QAccessible::Text, const QString &) override { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? characterName(index_) : QString();
    }

    QRect rect() const override
    {
        const QRect cell = grid_ ? grid_->cellRect(index_) : QRect();
        return grid_ ? QRect(grid_->mapToGlobal(cell.topLeft()), cell.size()) : cell;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.focusable = true;
        state.selected = grid_ && grid_->current() == index_;
        state.focused = state.selected && grid_->hasFocus();
        state.invisible = !grid_ || !grid_->isVisible();
        return state;
    }

private:
    QPointer<CharacterGrid> grid_;
    int index_;
};

class GridAccessible : public QAccessibleWidget
{
public:
    explicit GridAccessible(CharacterGrid &grid) : QAccessibleWidget(&grid, QAccessible::List) { }
    ~GridAccessible() override
    {
        for (const QAccessible::Id id : cells_) {
            if (id != 0)
                QAccessible::deleteAccessibleInterface(id);
        }
    }
    Q_DISABLE_COPY_MOVE(GridAccessible)

    int childCount() const override { return characterCount; }
    QAccessibleInterface *focusChild() const override { return child(grid()->current() - 1); }

    QAccessibleInterface *child(int number) const override
    {
        if (number < 0 || number >= characterCount)
            return nullptr;
        QAccessible::Id &id = cells_[static_cast<std::size_t>(number)];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(new CellAccessible(*grid(), number + 1));
        return QAccessible::accessibleInterface(id);
    }

    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QPoint place = grid()->mapFromGlobal(QPoint(x, y));
        return child(grid()->indexAt(place) - 1);
    }

    int indexOfChild(const QAccessibleInterface *wanted) const override
    {
        for (int number = 0; number < characterCount; ++number) {
            const QAccessible::Id id = cells_[static_cast<std::size_t>(number)];
            if (id != 0 && QAccessible::accessibleInterface(id) == wanted)
                return number;
        }
        return -1;
    }

private:
    CharacterGrid *grid() const { return static_cast<CharacterGrid *>(widget()); }

    mutable std::array<QAccessible::Id, characterCount> cells_{}; // 0 for those not asked for yet
};

QAccessibleInterface *makeAccessible(const QString &, QObject *object)
{
    auto *grid = qobject_cast<CharacterGrid *>(object);
    return grid == nullptr ? nullptr : new GridAccessible(*grid);
}

} // namespace

void describeGridsToAssistance() { QAccessible::installFactory(makeAccessible); }

void announceCell(CharacterGrid &grid, int index)
{
    QAccessibleEvent event(&grid, QAccessible::Focus);
    event.setChild(index - 1);
    QAccessible::updateAccessibility(&event);
}

} // namespace editor
