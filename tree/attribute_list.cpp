#include "tree/attribute_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>
#include <memory>

namespace tree {

namespace {

enum Column
{
    NameColumn,
    ValueColumn
};

constexpr int originalRole = Qt::UserRole; // of the name: what the attribute was called until now
constexpr qsizetype shownCharacters = 1000; // of a value, which can be a whole picture

// Values stand on one line, whatever they hold.
class OneLine : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &) const override
    {
        const QString text = value.toString();
        QString shown = text.left(shownCharacters);
        for (QChar &c : shown)
            if (c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator)
                c = u' ';
        return text.size() > shownCharacters ? shown + QChar(0x2026) : shown;
    }
};

// Keys that act on the selected row without a button.
struct Key
{
    QKeyCombination keys;
    void (*act)(AttributeList &list);
};

void modifySelected(AttributeList &list)
{
    if (list.selectedRow() >= 0)
        Q_EMIT list.modifyRequested();
}

const Key keys[] = {
    {Qt::Key_F2, modifySelected},
    {Qt::Key_Insert, [](AttributeList &list) { Q_EMIT list.addRequested(); }},
    {Qt::Key_Delete, [](AttributeList &list) { list.remove(); }},
    {Qt::ControlModifier | Qt::Key_Up, [](AttributeList &list) { list.moveUp(); }},
    {Qt::ControlModifier | Qt::Key_Down, [](AttributeList &list) { list.moveDown(); }},
};

} // namespace

AttributeList::AttributeList(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("ListView1"));
    setAccessibleName(QStringLiteral("Attributes"));
    setColumnCount(2);
    setHeaderLabels({QStringLiteral("Attribute Name"), QStringLiteral("Attribute Value")});
    setItemDelegate(new OneLine(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    header()->setSectionsMovable(false);
    connect(this, &QTreeWidget::currentItemChanged, this, &AttributeList::ItemClick);
}

void AttributeList::fill(const QList<dom::AttributeEdit> &rows)
{
    clear();
    for (const dom::AttributeEdit &row : rows)
        append(row);
    setCurrentItem(topLevelItem(0));
    Q_EMIT ItemClick();
}

QList<dom::AttributeEdit> AttributeList::rows() const
{
    QList<dom::AttributeEdit> out;
    for (int i = 0; i < count(); ++i) {
        const QTreeWidgetItem &item = *topLevelItem(i);
        out.append(
            {item.text(NameColumn), item.text(ValueColumn), item.data(NameColumn, originalRole).toString()});
    }
    return out;
}

int AttributeList::selectedRow() const
{
    QTreeWidgetItem *item = currentItem();
    return item ? indexOfTopLevelItem(item) : -1;
}

dom::Attribute AttributeList::selected() const
{
    const QTreeWidgetItem *item = currentItem();
    return item ? dom::Attribute{item->text(NameColumn), item->text(ValueColumn)} : dom::Attribute();
}

bool AttributeList::hasName(const QString &name) const
{
    return !findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive, NameColumn).isEmpty();
}

void AttributeList::append(const dom::AttributeEdit &row)
{
    auto item = std::make_unique<QTreeWidgetItem>(QStringList{row.name, row.value});
    item->setData(NameColumn, originalRole, row.original);
    addTopLevelItem(item.release());
}

void AttributeList::tellEdited()
{
    Q_EMIT ItemClick();
    Q_EMIT edited();
}

void AttributeList::add(const QString &name, const QString &value)
{
    append({name, value, {}});
    setCurrentItem(topLevelItem(count() - 1));
    tellEdited();
}

void AttributeList::change(const QString &name, const QString &value)
{
    QTreeWidgetItem *item = currentItem();
    if (!item)
        return;
    item->setText(NameColumn, name);
    item->setText(ValueColumn, value);
    tellEdited();
}

void AttributeList::remove()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    const std::unique_ptr<QTreeWidgetItem> gone(takeTopLevelItem(row));
    setCurrentItem(topLevelItem(qMin(row, count() - 1)));
    tellEdited();
}

void AttributeList::removeAll()
{
    clear();
    tellEdited();
}

void AttributeList::moveUp() { moveBy(-1); }

void AttributeList::moveDown() { moveBy(1); }

void AttributeList::moveBy(int rows)
{
    const int row = selectedRow();
    if (row < 0 || row + rows < 0 || row + rows >= count())
        return;
    std::unique_ptr<QTreeWidgetItem> moved(takeTopLevelItem(row));
    QTreeWidgetItem *item = moved.get();
    insertTopLevelItem(row + rows, moved.release());
    setCurrentItem(item);
    tellEdited();
}

void AttributeList::keyPressEvent(QKeyEvent *event)
{
    for (const Key &key : keys) {
        if (event->keyCombination() == key.keys) {
            key.act(*this);
            return event->accept();
        }
    }
    QTreeWidget::keyPressEvent(event);
}

void AttributeList::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        modifySelected(*this);
    event->accept();
}

// The buttons act on the current row, so that is the selected one.
QItemSelectionModel::SelectionFlags AttributeList::selectionCommand(const QModelIndex &index,
                                                                    const QEvent *event) const
{
    if (!index.isValid())
        return QItemSelectionModel::NoUpdate;
    const auto command = QTreeWidget::selectionCommand(index, event);
    const bool mayDeselect = command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle);
    return mayDeselect ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows : command;
}

// Names get two fifths and room for their caption, until somebody wants it otherwise; the columns keep their
// shares.
void AttributeList::resizeEvent(QResizeEvent *event)
{
    QTreeWidget::resizeEvent(event);
    const int before = event->oldSize().width();
    const int width = event->size().width();
    header()->resizeSection(NameColumn,
                            before > 0 ? width * header()->sectionSize(NameColumn) / before
                                       : std::max(header()->sectionSizeHint(NameColumn), width * 2 / 5));
}

} // namespace tree
