// Paints a row of the tree: picture, label, and the muted hint of a node that has no label.
#pragma once

#include <QIcon>
#include <QStyledItemDelegate>
#include <array>

namespace tree {

class NodeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setNodeImages(const std::array<QIcon, 5> &images) { images_ = images; } // for images 1 to 5
    QIcon image(const QModelIndex &index) const;

    // The whole label in a tool tip, where the row is too short for it.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    bool isCut(const QStyleOptionViewItem &option, const QModelIndex &index) const;

    std::array<QIcon, 5> images_;
};

} // namespace tree
