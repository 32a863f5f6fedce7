// Stands in for the view: a selection and what is open, without a window.
#pragma once

#include "tree/tree_face.h"
#include "tree/tree_model.h"

#include <QPersistentModelIndex>
#include <QSet>

namespace tree_test {

class PlainFace : public tree::TreeFace
{
public:
    explicit PlainFace(tree::TreeModel &model) : model_(model)
    {
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model, [this] { dropInvalid(); });
        QObject::connect(&model, &QAbstractItemModel::modelReset, &model, [this] {
            open_.clear();
            selected_ = model_.index(0, 0);
        });
    }

    QModelIndex selected() const override { return selected_; }
    void select(const QModelIndex &node) override
    {
        selected_ = node;
        for (QModelIndex above = node.parent(); above.isValid(); above = above.parent())
            open_.insert(above);
    }
    bool isOpen(const QModelIndex &node) const override { return open_.contains(node); }
    void setOpen(const QModelIndex &node, bool open) override
    {
        if (!open)
            open_.remove(node);
        else if (node.isValid())
            open_.insert(node);
    }
    void openAll() override { openBelow(model_.index(0, 0)); }
    void closeAll() override { open_.clear(); }
    void showBusy(bool busy) override { busy_ += busy ? 1 : -1; }
    void freeze(bool) override { }

    bool isBusy() const { return busy_ != 0; }

private:
    void openBelow(const QModelIndex &node)
    {
        open_.insert(node);
        for (int row = 0; row < model_.rowCount(node); ++row)
            openBelow(model_.index(row, 0, node));
    }
    // As a view does: rows that come back are closed.
    void dropInvalid()
    {
        QSet<QPersistentModelIndex> kept;
        for (const QPersistentModelIndex &node : std::as_const(open_)) {
            if (node.isValid())
                kept.insert(node);
        }
        open_ = kept;
    }

    tree::TreeModel &model_;
    QPersistentModelIndex selected_;
    QSet<QPersistentModelIndex> open_;
    int busy_ = 0;
};

} // namespace tree_test
