#include "app/tree_place.h"

#include "platform/control/text_difference.h"
#include "platform/dom/document.h"
#include "platform/dom/serialiser.h"
#include "tree/tree_view.h"

#include <QScrollBar>

#include <utility>

namespace app {

namespace {

constexpr size_t mostOpen = 20'000; // nodes opened again; each is looked for in the text
constexpr int mostRows = 500'000; // looked through for open ones

// Whole nodes that came or went make a stretch that begins with "<". So does the node behind them, and what
// both texts begin with may reach into that.
control::TextDifference nodeDifference(QByteArrayView before, QByteArrayView after)
{
    const control::TextDifference found = control::differenceOf(before, after);
    control::TextDifference moved = found;
    const auto begins = [&](QByteArrayView text) {
        return text.size() > moved.prefix + moved.suffix && text[moved.prefix] == '<';
    };
    while (!begins(before) && !begins(after)) {
        const auto movesOn = [&](QByteArrayView text) {
            return moved.prefix > 0 && text[moved.prefix - 1] == text[text.size() - moved.suffix - 1];
        };
        if (!movesOn(before) || !movesOn(after))
            return found;
        --moved.prefix;
        ++moved.suffix;
    }
    return moved;
}

} // namespace

void TreePlace::hold()
{
    text_ = document_.xml();
    selected_ = offsetOf(view_.currentIndex());
    top_ = offsetOf(view_.shownRow(view_.verticalScrollBar()->value()));
    holdOpen();
}

void TreePlace::holdOpen()
{
    open_.clear();
    QModelIndex row = model_.shownAt(0);
    for (int rows = 0; row.isValid() && rows < mostRows && open_.size() < mostOpen; ++rows) {
        if (model_.isOpen(row))
            open_.push_back(offsetOf(row));
        row = model_.shownAfter(row);
    }
}

void TreePlace::restore()
{
    const QByteArray before = std::exchange(text_, {});
    const QByteArray after = document_.xml();
    const auto [prefix, suffix] = nodeDifference(before, after);
    const auto find = [&, prefix = prefix, suffix = suffix](qsizetype offset) -> QModelIndex {
        const bool isBehind = offset >= before.size() - suffix;
        // What begins in the stretch that differs is another node.
        if (offset < 0 || (offset >= prefix && !isBehind))
            return {};
        return beginningAt(offset < prefix ? offset : offset + after.size() - before.size());
    };
    for (const qsizetype offset : std::exchange(open_, {}))
        view_.setOpen(find(offset), true);
    if (const QModelIndex top = find(top_); top.isValid())
        view_.scrollTo(top, QAbstractItemView::PositionAtTop);
    if (const QModelIndex selected = find(selected_); selected.isValid())
        view_.select(selected);
}

qsizetype TreePlace::selectedOffset() const { return offsetOf(view_.currentIndex()); }

qsizetype TreePlace::offsetOf(const QModelIndex &node) const
{
    const dom::Node *found = model_.GetNodepar(node);
    return found ? dom::Serialiser::beginOf(*found, *document_.documentNode()) : -1;
}

QModelIndex TreePlace::nodeAt(qsizetype offset) const
{
    const dom::Node *found = dom::Serialiser::nodeAt(*document_.documentNode(), offset);
    const QModelIndex node = model_.reach(found);
    return node.isValid() ? node : model_.index(0, 0);
}

QModelIndex TreePlace::beginningAt(qsizetype offset) const
{
    const QModelIndex node = nodeAt(offset);
    return offsetOf(node) == offset ? node : QModelIndex();
}

void TreePlace::select(qsizetype offset)
{
    const QModelIndex node = nodeAt(offset);
    if (node.isValid() && node != view_.currentIndex())
        view_.select(node);
}

} // namespace app
