#include "tree/tree_view.h"

#include "tree/node_delegate.h"
#include "tree/tree_model.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <memory>
#include <optional>

namespace tree {

namespace {

constexpr int openingDelay = 800; // ms that a drag rests on a node before that opens
constexpr int searchedRows = 5000; // typed text is looked for in so many rows: looking makes them
constexpr int dragImageWidth = 300; // pixels at most

class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

} // namespace

TreeView::TreeView(TreeModel &model, QWidget *parent)
    : QTreeView(parent), model_(model), delegate_(new NodeDelegate(this))
{
    setObjectName(QStringLiteral("TreeView1"));
    setAccessibleName(QStringLiteral("Document tree"));
    setItemDelegate(delegate_);
    setHeaderHidden(true);
    setUniformRowHeights(true); // no row but one is measured
    setAnimated(false);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(DragDrop);
    setDragDropOverwriteMode(true); // onto nodes, never between them
    setDropIndicatorShown(false); // the drop highlight takes its place
    setAutoExpandDelay(openingDelay);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setModel(&model_);
    setDrop([this](const QModelIndex &dragged, const QModelIndex &target) {
        return model_.drop(dragged, target);
    });
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    watchChanges();
    showRoot();
}

void TreeView::watchChanges()
{
    // After the selection's own reset, which setModel has connected before.
    connect(&model_, &QAbstractItemModel::modelReset, this, &TreeView::showRoot);
    connect(this, &QAbstractItemView::clicked, this, &TreeView::nodeClicked);
    fitSoon_.setSingleShot(true);
    connect(&fitSoon_, &QTimer::timeout, this, &TreeView::fitColumn);
    const auto fit = [this] { fitSoon_.start(); };
    connect(this, &QTreeView::expanded, this, fit);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, fit);
    connect(&model_, &QAbstractItemModel::rowsMoved, this, fit);
    connect(this, &QTreeView::collapsed, this, [this] {
        columnNeeds_ = 0;
        fitSoon_.start();
    });
}

void TreeView::setNodeImages(const std::array<QIcon, 5> &images)
{
    delegate_->setNodeImages(images);
    viewport()->update();
}

void TreeView::showRoot()
{
    columnNeeds_ = 0;
    const QModelIndex root = model_.index(0, 0);
    setCurrentIndex(root);
    open(root);
}

void TreeView::open(const QModelIndex &node)
{
    if (!node.isValid())
        return;
    const BusyPointer busy;
    expand(node);
    executeDelayedItemsLayout();
}

bool TreeView::isExpandable(const QModelIndex &node) const
{
    return node.data(TreeModel::ImageRole).toInt() == ElementImage && model_.hasChildren(node);
}

bool TreeView::wouldOpen(const QPoint &position) const
{
    const QModelIndex node = indexAt(position);
    return node.isValid() && !isExpanded(node) && model_.hasChildren(node);
}

// The column is as wide as the view, and wider only where rows stand so deep that little of it would be left
// for their labels. Only rows in view count.
void TreeView::fitColumn()
{
    for (QModelIndex row = indexAt(QPoint(0, 0)); row.isValid(); row = indexBelow(row)) {
        const QRect place = visualRect(row);
        if (place.top() > viewport()->height())
            break;
        columnNeeds_ = qMax(columnNeeds_, place.left() + horizontalOffset() + labelRoom());
    }
    const int width = qMax(columnNeeds_, viewport()->width());
    if (columnWidth(0) == width)
        return;
    setColumnWidth(0, width);
    updateGeometries(); // now, for whoever is about to scroll
}

int TreeView::labelRoom() const { return 40 * fontMetrics().averageCharWidth(); }

void TreeView::scrollTo(const QModelIndex &node, ScrollHint hint)
{
    // The base class would go back to the far left, where a deep row has nothing to show.
    QScrollBar *sideways = horizontalScrollBar();
    const int before = sideways->value();
    QTreeView::scrollTo(node, hint);
    fitColumn();
    const int left = visualRect(node).left() + horizontalOffset();
    const int leftmost = left + qMin(labelRoom(), viewport()->width()) - viewport()->width();
    sideways->setValue(qBound(leftmost, before, qMax(leftmost, left - indentation())));
}

void TreeView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    fitColumn();
}

void TreeView::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex node = indexAt(event->position().toPoint());
    if (node.isValid()) {
        // Without scrolling: the second click of a double-click must find the node where it was.
        setAutoScroll(false);
        setCurrentIndex(node);
        setAutoScroll(true);
    }
    if (event->button() == Qt::RightButton) {
        event->accept();
        Q_EMIT contextMenuRequested(event->globalPosition().toPoint());
        return;
    }
    std::optional<BusyPointer> busy;
    if (wouldOpen(event->position().toPoint()))
        busy.emplace();
    QTreeView::mousePressEvent(event);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex node = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && node.isValid() && !isExpandable(node)) {
        event->accept();
        Q_EMIT editRequested();
        return;
    }
    std::optional<BusyPointer> busy;
    if (wouldOpen(event->position().toPoint()))
        busy.emplace();
    QTreeView::mouseDoubleClickEvent(event);
}

void TreeView::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept(); // the mouse asked at its press
    if (event->reason() == QContextMenuEvent::Mouse)
        return;
    const QRect row = visualRect(currentIndex());
    Q_EMIT contextMenuRequested(viewport()->mapToGlobal(row.isValid() ? row.center() : QPoint()));
}

void TreeView::keyPressEvent(QKeyEvent *event)
{
    const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
    if (isArrow && event->modifiers().testFlag(Qt::AltModifier)) {
        event->accept(); // a move of the node that does not apply just now is none of the selection either
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        Q_EMIT editRequested();
        return;
    }
    const QModelIndex node = currentIndex();
    // By default "*" opens all levels below, which may be millions of nodes; here it opens one.
    const bool opens = event->key() == Qt::Key_Asterisk || event->key() == Qt::Key_Plus;
    if (opens && model_.hasChildren(node)) {
        open(node);
        event->accept();
        return;
    }
    std::optional<BusyPointer> busy;
    if (event->key() == Qt::Key_Right && !isExpanded(node) && model_.hasChildren(node))
        busy.emplace();
    QTreeView::keyPressEvent(event);
}

void TreeView::keyboardSearch(const QString &search)
{
    const bool goesOn = lastTyped_.isValid() && lastTyped_.elapsed() < QApplication::keyboardInputInterval();
    lastTyped_.start();
    typed_ = goesOn ? typed_ + search : search;
    QModelIndex row = goesOn ? currentIndex() : indexBelow(currentIndex());
    for (int i = 0; i < searchedRows && row.isValid(); ++i, row = indexBelow(row)) {
        if (!row.data().toString().startsWith(typed_, Qt::CaseInsensitive))
            continue;
        setCurrentIndex(row);
        return;
    }
}

QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const
{
    // Some node is always selected.
    if (!index.isValid())
        return QItemSelectionModel::NoUpdate;
    const auto command = QTreeView::selectionCommand(index, event);
    const bool mayDeselect = command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle);
    return mayDeselect ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows : command;
}

void TreeView::startDrag(Qt::DropActions)
{
    const QModelIndex node = currentIndex();
    model_.beginDrag(node);
    if (!model_.IsDragging())
        return;
    QRect row = visualRect(node).intersected(viewport()->rect());
    row.setWidth(qMin(row.width(), dragImageWidth));
    auto *drag = new QDrag(this);
    drag->setMimeData(model_.mimeData({node}));
    drag->setPixmap(viewport()->grab(row));
    drag->exec(Qt::MoveAction);
    setDropHighlight({});
    model_.endDrag();
}

void TreeView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!model_.IsDragging())
        event->ignore(); // files and the like are for the window
    else
        QTreeView::dragEnterEvent(event);
}

void TreeView::dragMoveEvent(QDragMoveEvent *event)
{
    if (!model_.IsDragging()) {
        event->ignore();
        return;
    }
    QTreeView::dragMoveEvent(event); // scrolls and opens
    const QModelIndex target = indexAt(event->position().toPoint());
    setDropHighlight(target);
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(model_.canDropMimeData(event->mimeData(), Qt::MoveAction, -1, -1, target));
}

void TreeView::dragLeaveEvent(QDragLeaveEvent *event)
{
    QTreeView::dragLeaveEvent(event);
    setDropHighlight({});
}

void TreeView::dropEvent(QDropEvent *event)
{
    if (!model_.IsDragging()) {
        event->ignore();
        return;
    }
    stopAutoScroll();
    setState(NoState);
    setDropHighlight({});
    const auto done = drop_(model_.DraggedNode(), indexAt(event->position().toPoint()));
    event->setDropAction(done ? Qt::MoveAction : Qt::IgnoreAction);
    event->setAccepted(done.ok());
    const QPersistentModelIndex moved = model_.DraggedNode();
    model_.endDrag();
    if (!done) {
        Q_EMIT noted(done.reason());
        return;
    }
    scrollTo(moved);
    Q_EMIT dropped();
}

void TreeView::setDropHighlight(const QModelIndex &node)
{
    if (dropHighlight_ == node)
        return;
    dropHighlight_ = node;
    viewport()->update();
}

void TreeView::drawRow(QPainter *painter, const QStyleOptionViewItem &options, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, options, index);
    if (!dropHighlight_.isValid() || dropHighlight_ != index)
        return;
    QColor fill = options.palette.color(QPalette::Highlight);
    painter->save();
    painter->setPen(fill);
    fill.setAlphaF(0.25F);
    painter->setBrush(fill);
    painter->drawRect(visualRect(index).intersected(viewport()->rect()).adjusted(0, 0, -1, -1));
    painter->restore();
}

} // namespace tree
