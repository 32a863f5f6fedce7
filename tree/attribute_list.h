// The list `ListView1` of an element's attributes: name and value in two columns, in the order in which they
// are written. A row remembers which attribute of the element it was, so that this can keep its spelling.
#pragma once

#include "platform/dom/document.h"

#include <QTreeWidget>

namespace tree {

class AttributeList : public QTreeWidget
{
    Q_OBJECT

public:
    explicit AttributeList(QWidget *parent = nullptr);

    void fill(const QList<dom::AttributeEdit> &rows); // the first one is selected
    QList<dom::AttributeEdit> rows() const;

    int count() const { return topLevelItemCount(); }
    int selectedRow() const; // -1 for none
    dom::Attribute selected() const; // empty for none
    bool hasName(const QString &name) const;

    void add(const QString &name, const QString &value); // at the end, selected
    void change(const QString &name, const QString &value); // the selected row

public Q_SLOTS:
    void remove(); // the selected row; the one that takes its place becomes selected
    void removeAll();
    void moveUp(); // the selected row, which stays selected
    void moveDown();

Q_SIGNALS:
    void addRequested();
    void modifyRequested(); // there is a selected row
    void ItemClick(); // another row is selected, or stands elsewhere, or there is none
    void edited(); // rows changed

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void append(const dom::AttributeEdit &row);
    void moveBy(int rows);
    void tellEdited();
};

} // namespace tree
