#include "tree/tree_view.h"

#include "tree/accessible_tree.h"
#include "tree/node_delegate.h"

#include "platform/busy_pointer.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <memory>
#include <utility>

namespace tree {

namespace {

constexpr int openingDelay = 800; // ms that a drag rests on a node before that opens
constexpr int searchedRows = 5000; // typed text is looked for in so many rows: looking makes them
constexpr int dragImageWidth = 300; // pixels at most

} // namespace

TreeView::TreeView(TreeModel &model, QWidget *parent)
    : QTreeView(parent), model_(model), delegate_(new NodeDelegate(this))
{
    describeToAccessibility(); // before anything asks for its description
    setObjectName(QStringLiteral("TreeView1"));
    setAccessibleName(QStringLiteral("Document tree"));
    setItemDelegate(delegate_);
    setHeaderHidden(true);
    setAnimated(false);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(DragDrop);
    setDragDropOverwriteMode(true); // onto nodes, never between them
    setDropIndicatorShown(false); // the drop highlight takes its place
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
    openSoon_.setSingleShot(true);
    openSoon_.setInterval(openingDelay);
    connect(&openSoon_, &QTimer::timeout, this, [this] { open(dropHighlight_); });
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
    const platform::BusyPointer busy;
    expand(node);
}

bool TreeView::isExpandable(const QModelIndex &node) const
{
    return node.data(TreeModel::ImageRole).toInt() == ElementImage && model_.hasChildren(node);
}

// The column is as wide as the view, and wider only where rows stand so deep that little of it would be left
// for their labels. Only rows in view count.
void TreeView::fitColumn()
{
    executeDelayedItemsLayout();
    QModelIndex row = model_.shownAt(verticalScrollBar()->value());
    int level = row.isValid() ? model_.levelOf(row) : 0;
    for (int rows = 0; row.isValid() && rows <= rowsInView(); ++rows) {
        columnNeeds_ = qMax(columnNeeds_, (level + 1) * indentation() + labelRoom());
        row = model_.shownAfter(row, &level);
    }
    const int width = qMax(columnNeeds_, viewport()->width());
    if (columnWidth(0) == width)
        return;
    setColumnWidth(0, width);
    updateGeometries(); // now, for whoever is about to scroll
}

int TreeView::labelRoom() const { return 40 * fontMetrics().averageCharWidth(); }

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
    pressedBranch_ = isBranchAt(event->position().toPoint());
    pressedNode_ = pressedBranch_ ? QModelIndex() : node;
    if (togglesAt(QEvent::MouseButtonPress, *event))
        toggle(node);
    if (!pressedBranch_)
        QAbstractItemView::mousePressEvent(event);
}

void TreeView::mouseMoveEvent(QMouseEvent *event)
{
    if (!pressedBranch_)
        QAbstractItemView::mouseMoveEvent(event);
}

void TreeView::mouseReleaseEvent(QMouseEvent *event)
{
    if (togglesAt(QEvent::MouseButtonRelease, *event))
        toggle(indexAt(event->position().toPoint()));
    if (!std::exchange(pressedBranch_, false))
        QAbstractItemView::mouseReleaseEvent(event);
}

// Whether an event on a branch opens or closes a node: the style says which of the two does.
bool TreeView::togglesAt(QEvent::Type type, const QMouseEvent &event) const
{
    return pressedBranch_ && event.button() == Qt::LeftButton && isBranchAt(event.position().toPoint())
        && style()->styleHint(QStyle::SH_ListViewExpand_SelectMouseType, nullptr, this) == type;
}

void TreeView::toggle(const QModelIndex &node)
{
    if (isExpanded(node))
        collapse(node);
    else
        open(node);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex node = pressedNode_; // what the first click did may have moved the rows since
    if (!node.isValid() && isBranchAt(event->position().toPoint())) {
        mousePressEvent(event);
        return;
    }
    if (event->button() != Qt::LeftButton || !node.isValid())
        return;
    event->accept();
    if (isExpandable(node))
        toggle(node);
    else
        Q_EMIT editRequested();
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
    const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (isPlain && stepSideways(Qt::Key(event->key()))) {
        event->accept();
        return;
    }
    QAbstractItemView::keyPressEvent(event);
}

// Left closes a node, or goes to the one above it; Right opens it, or goes to the first below it.
bool TreeView::stepSideways(Qt::Key key)
{
    const QModelIndex node = currentIndex();
    const Qt::Key inwards = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const Qt::Key outwards = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    const bool isParent = node.isValid() && model_.hasChildren(node);
    const bool isOpenParent = isParent && isExpanded(node);
    if (node.isValid() && ((key == outwards && isOpenParent) || key == Qt::Key_Minus))
        collapse(node);
    else if (key == inwards && isParent && !isOpenParent)
        open(node);
    else if (key == inwards && isOpenParent)
        setCurrentIndex(model_.index(0, 0, node));
    else if (key == outwards && node.parent().isValid())
        setCurrentIndex(node.parent());
    else
        return false;
    return true;
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
    QAbstractItemView::dragMoveEvent(event); // scrolls
    const QModelIndex target = indexAt(event->position().toPoint());
    setDropHighlight(target);
    openSoon_.start();
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
    if (!node.isValid())
        openSoon_.stop();
    if (dropHighlight_ == node)
        return;
    dropHighlight_ = node;
    viewport()->update();
}

} // namespace tree
