#include "tree/tree_model.h"

#include <QMimeData>
#include <algorithm>

namespace tree {

namespace {

constexpr qsizetype toolTipLength = 2000;

QString dragFormat() { return QStringLiteral("application/x-zelph-tree-node"); }

RowList *listIn(const QModelIndex &index) { return static_cast<RowList *>(index.internalPointer()); }

} // namespace

TreeModel::TreeModel(dom::Document &document, QObject *parent)
    : QAbstractItemModel(parent), document_(document), rows_(std::make_shared<TreeRows>())
{
    document_.setObserver(this);
}

TreeModel::~TreeModel() { document_.setObserver(nullptr); }

void TreeModel::nametree(dom::Node *domNode)
{
    Q_EMIT aboutToRebuild();
    beginResetModel();
    endDrag();
    const dom::Node *top = document_.documentNode();
    rows_->rebuild(domNode, top != builtFrom_);
    builtFrom_ = top;
    document_.releaseFormer();
    topLevelCount_ = domNode && domNode->parent() ? domNode->parent()->childCount() : 0;
    endResetModel();
}

QString TreeModel::trekey() { return QString::number(rows_->nextNumber()) + u'_'; }

qint64 TreeModel::GetNodeLevel(const QModelIndex &node) const { return node.row(); }

dom::Node *TreeModel::GetNodepar(const QModelIndex &node) const
{
    const TreeNode *found = nodeAt(node);
    return found && document_.documentNode()->contains(found->dom) ? found->dom : nullptr;
}

TreeNode *TreeModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? rows_->node(*listIn(index), index.row()) : nullptr;
}

QModelIndex TreeModel::indexOf(const TreeNode &node) const
{
    return node.run ? createIndex(int(node.run->rowOf(&node)), 0, node.run->list) : QModelIndex();
}

QModelIndex TreeModel::ownerIndex(const RowList &list) const
{
    return list.owner() ? indexOf(*list.owner()) : QModelIndex();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column != 0 || parent.column() > 0)
        return {};
    RowList *list = &rows_->top();
    if (parent.isValid()) {
        TreeNode *node = nodeAt(parent);
        list = node ? &rows_->below(*node) : nullptr;
    }
    return list && row < list->count() ? createIndex(row, 0, list) : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? ownerIndex(*listIn(child)) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    if (!parent.isValid())
        return int(rows_->top().count());
    TreeNode *node = nodeAt(parent);
    return node ? int(rows_->below(*node).count()) : 0;
}

int TreeModel::columnCount(const QModelIndex &) const { return 1; }

bool TreeModel::hasChildren(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return rows_->top().count() > 0;
    return parent.column() == 0 && rows_->hasChildren(*listIn(parent), parent.row());
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    static constexpr int served[]
        = {Qt::DisplayRole, Qt::ToolTipRole, LabelRole, KeyRole, ImageRole, HintRole};
    if (std::find(std::begin(served), std::end(served), role) == std::end(served))
        return {};
    const TreeNode *node = nodeAt(index);
    if (!node)
        return {};
    if (role == KeyRole)
        return node->key();
    switch (role) {
    case Qt::DisplayRole:
        return shortLabel(*node->dom, node->rule);
    case Qt::ToolTipRole:
        return shortLabel(*node->dom, node->rule, toolTipLength);
    case LabelRole:
        return label(*node->dom, node->rule);
    case ImageRole:
        return int(imageOf(node->dom->kind()));
    default:
        return node->dom->kind() == dom::NodeKind::EntityReference ? QString(u'&' + node->dom->name() + u';')
                                                                   : QString();
    }
}

Qt::ItemFlags TreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    // Whether a row takes a drop is canDropMimeData's to say: asking here would make every row laid out.
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    return listIn(index) == &rows_->top() ? flags : flags | Qt::ItemIsDragEnabled;
}

void TreeModel::beginDrag(const QModelIndex &node)
{
    draggedNode_ = node;
    isDragging_ = node.isValid() && node.parent().isValid();
}

void TreeModel::endDrag()
{
    draggedNode_ = QPersistentModelIndex();
    isDragging_ = false;
}

QStringList TreeModel::mimeTypes() const { return {dragFormat()}; }

QMimeData *TreeModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto data = std::make_unique<QMimeData>();
    data->setData(dragFormat(), indexes.first().data(KeyRole).toString().toUtf8());
    return data.release(); // the caller owns it
}

bool TreeModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int,
                                const QModelIndex &parent) const
{
    return isDragging_ && data->hasFormat(dragFormat()) && dropRefusal(draggedNode_, parent).isEmpty();
}

bool TreeModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                             const QModelIndex &parent)
{
    return canDropMimeData(data, action, row, column, parent) && drop(draggedNode_, parent).ok();
}

QString TreeModel::dropRefusal(const QModelIndex &dragged, const QModelIndex &target) const
{
    const dom::Node *node = GetNodepar(dragged);
    const dom::Node *into = GetNodepar(target);
    if (!node || !into)
        return QStringLiteral("There is nothing to drop here.");
    if (!dragged.parent().isValid())
        return QStringLiteral("The document element cannot be moved.");
    if (into->kind() != dom::NodeKind::Element)
        return QStringLiteral("A node can only be dropped onto an element.");
    if (node->contains(into))
        return QStringLiteral("A node cannot be dropped onto itself or a node below it.");
    return {};
}

} // namespace tree
