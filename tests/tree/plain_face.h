// Stands in for the view: a selection, without a window.
#pragma once

#include "tree/tree_face.h"
#include "tree/tree_model.h"

#include <QPersistentModelIndex>

namespace tree_test {

class PlainFace : public tree::TreeFace
{
public:
    explicit PlainFace(tree::TreeModel &model) : model_(model)
    {
        QObject::connect(&model, &QAbstractItemModel::modelReset, &model,
                         [this] { selected_ = model_.index(0, 0); });
    }

    QModelIndex selected() const override { return selected_; }
    void select(const QModelIndex &node) override
    {
        selected_ = node;
        for (QModelIndex above = node.parent(); above.isValid(); above = above.parent())
            model_.setOpen(above, true);
    }
    bool isOpen(const QModelIndex &node) const override { return model_.isOpen(node); }
    void setOpen(const QModelIndex &node, bool open) override { model_.setOpen(node, open); }
    void openAll() override { model_.openAll().step(1'000'000); }
    void closeAll() override { model_.closeAll(); }
    void showBusy(bool busy) override { busy_ += busy ? 1 : -1; }
    void freeze(bool) override { }

    bool isBusy() const { return busy_ != 0; }

private:
    tree::TreeModel &model_;
    QPersistentModelIndex selected_;
    int busy_ = 0;
};

} // namespace tree_test
