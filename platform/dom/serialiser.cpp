#include "platform/dom/serialiser.h"

#include "platform/dom/node.h"
#include "platform/dom/source.h"

#include <vector>

namespace dom {

namespace {

// The pieces in order; consecutive ranges of the same text become one.
class Pieces
{
public:
    void add(QByteArrayView piece)
    {
        if (piece.isEmpty())
            return;
        size_ += piece.size();
        if (!pieces_.empty() && pieces_.back().end() == piece.begin())
            pieces_.back() = QByteArrayView(pieces_.back().data(), pieces_.back().size() + piece.size());
        else
            pieces_.push_back(piece);
    }

    QByteArray join() const
    {
        QByteArray out;
        out.reserve(size_);
        for (const QByteArrayView piece : pieces_)
            out.append(piece);
        return out;
    }

private:
    std::vector<QByteArrayView> pieces_;
    qsizetype size_ = 0;
};

// An edited element under way: where its children are up to.
struct Frame
{
    const Node *element;
    size_t block;
    size_t node;
};

} // namespace

// Documents may be deeper than the stack is, so the elements under way stand in a vector.
QByteArray Serialiser::xml(const Node &node)
{
    Pieces pieces;
    std::vector<Frame> frames;
    const auto enter = [&](const Node &entered) {
        if (!entered.dirty_) {
            pieces.add(entered.source_->view(entered.whole_));
            return;
        }
        pieces.add(entered.head());
        if (entered.children_) {
            frames.push_back({&entered, 0, 0});
        } else if (entered.kind_
                   == NodeKind::Element) { // not listed: the end is of its own only without a source
            pieces.add(entered.source_->view({entered.whole_.begin + entered.headSize_, entered.whole_.end}));
            pieces.add(entered.end());
        }
    };
    enter(node);
    while (!frames.empty()) {
        Frame &frame = frames.back();
        const auto &blocks = frame.element->children_->blocks();
        if (frame.block == blocks.size()) {
            pieces.add(frame.element->tail());
            pieces.add(frame.element->end());
            frames.pop_back();
        } else if (const ChildList::Block &block = *blocks[frame.block]; !block.dirty) {
            pieces.add(block.source->view(block.span));
            ++frame.block;
        } else if (frame.node == block.nodes.size()) {
            ++frame.block;
            frame.node = 0;
        } else {
            const Node &child = *block.nodes[frame.node++];
            pieces.add(child.lead());
            enter(child);
        }
    }
    return pieces.join();
}

} // namespace dom
