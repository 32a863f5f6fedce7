#include "tidy/options_list.h"

#include "tidy/option_values.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace tidy {

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int nameColumns = 30; // characters

enum Column
{
    NameColumn,
    ValueColumn
};

int indexOf(const QTreeWidgetItem &row) { return lstkey(row.data(NameColumn, keyRole).toString()); }

// A dot in the colour of a selection, or as much room without one.
QIcon mark(bool changed, const QWidget &list)
{
    const int side = list.fontMetrics().height();
    QPixmap picture(QSize(side, side) * list.devicePixelRatioF());
    picture.setDevicePixelRatio(list.devicePixelRatioF());
    picture.fill(Qt::transparent);
    if (changed) {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(list.palette().color(QPalette::Base), 1));
        painter.setBrush(list.palette().color(QPalette::Highlight));
        painter.drawEllipse(QRectF(side * 0.25, side * 0.25, side * 0.5, side * 0.5));
    }
    return QIcon(picture);
}

} // namespace

OptionsList::OptionsList(const TabRange &range, const OptionValues &values, QWidget *parent)
    : QTreeWidget(parent), values_(values)
{
    setHeaderLabels({QStringLiteral("Option"), QStringLiteral("Value")});
    setAccessibleName(QString::fromLatin1(range.caption));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    for (int index = range.first; index <= range.last; ++index) {
        auto *row = new QTreeWidgetItem(this, {optionCatalogue()[size_t(index)].nameText()});
        row->setData(NameColumn, keyRole, itemKey(index));
    }
    header()->resizeSection(NameColumn, fontMetrics().averageCharWidth() * nameColumns);
    refresh();
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem *row) {
        if (row)
            Q_EMIT optionSelected(indexOf(*row));
    });
    connect(this, &QTreeWidget::itemDoubleClicked, this, &OptionsList::editRequested);
}

void OptionsList::refresh()
{
    for (int row = 0; row < topLevelItemCount(); ++row)
        show(*topLevelItem(row));
}

void OptionsList::refresh(int index)
{
    for (int row = 0; row < topLevelItemCount(); ++row) {
        if (indexOf(*topLevelItem(row)) == index)
            show(*topLevelItem(row));
    }
}

void OptionsList::show(QTreeWidgetItem &row)
{
    const int index = indexOf(row);
    const bool changed = values_.isChanged(index);
    QFont font = this->font();
    font.setBold(changed);
    row.setText(ValueColumn, values_.value(index));
    row.setIcon(NameColumn, mark(changed, *this));
    const QString usual = defaultValue(index);
    const QString tip = !changed ? QString()
        : usual.isEmpty()        ? QStringLiteral("Changed; empty by default")
                                 : QStringLiteral("Changed; by default ") + usual;
    for (int column : {NameColumn, ValueColumn}) {
        row.setFont(column, font);
        row.setToolTip(column, tip);
        row.setData(column, Qt::AccessibleDescriptionRole, tip);
    }
}

int OptionsList::selected() const
{
    const QList<QTreeWidgetItem *> rows = selectedItems();
    return rows.isEmpty() ? -1 : indexOf(*rows.first());
}

bool OptionsList::select(const QString &key)
{
    for (int at = 0; at < topLevelItemCount(); ++at) {
        QTreeWidgetItem *row = topLevelItem(at);
        if (row->data(NameColumn, keyRole).toString() == key) {
            setCurrentItem(row);
            scrollToItem(row);
            return true;
        }
    }
    setCurrentItem(nullptr);
    clearSelection();
    return false;
}

void OptionsList::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2)
        Q_EMIT editRequested();
    else
        QTreeWidget::keyPressEvent(event);
}

} // namespace tidy
