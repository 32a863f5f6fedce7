#include "editor/replacing_text.h"

#include "platform/control/editor_look.h"
#include "platform/control/undo_step.h"

#include <algorithm>
#include <limits>

namespace editor {

namespace {

using S = QsciScintillaBase;

// Text that is replaced by itself takes less time than to begin a replacement anew.
constexpr qsizetype nearBy = 1000; // bytes
// Of more, folded lines are unfolded for the sake of time.
constexpr size_t mostAmongFolds = 200'000;

constexpr long noLine = std::numeric_limits<long>::max();

} // namespace

ReplacingText::ReplacingText(control::CodeEditor &editor)
    : editor_(editor), folded_(editor.send(S::SCI_GETALLLINESVISIBLE) == 0)
{
    const std::array<long, 3> now = places();
    for (size_t i = 0; i < now.size(); ++i)
        followed_[i] = {now[i], now[i]};
}

std::array<long, 3> ReplacingText::places() const
{
    const long top = editor_.send(S::SCI_DOCLINEFROMVISIBLE, ulong(editor_.send(S::SCI_GETFIRSTVISIBLELINE)));
    return {editor_.send(S::SCI_GETANCHOR), editor_.send(S::SCI_GETCURRENTPOS),
            editor_.send(S::SCI_POSITIONFROMLINE, ulong(top))};
}

void ReplacingText::add(QByteArrayView text, const control::TextMatch &match)
{
    const long length = long(texts_.size() - taken_);
    // The engine gives up all bookmarks with the whole of a text.
    const bool whole = match.end == text.size() && !pieces_.empty() && pieces_.back().range.start == 0;
    if (!whole && joins(match)) {
        const qsizetype between = pieces_.back().range.end;
        texts_.insert(taken_, text.sliced(between, match.start - between));
        pieces_.back() = {{pieces_.back().range.start, match.end}, texts_.size()};
    } else {
        pieces_.push_back({match, texts_.size()});
    }
    taken_ = texts_.size();
    ++count_;
    follow(match, shift_, length - long(match.length()));
    shift_ += length - long(match.length());
}

// Lines that are taken out and put back lose what belongs to them.
bool ReplacingText::joins(const control::TextMatch &match)
{
    if (pieces_.empty() || match.start - pieces_.back().range.end > nearBy)
        return false;
    const auto lineOf
        = [this](qsizetype place) { return editor_.send(S::SCI_LINEFROMPOSITION, ulong(place)); };
    const long first = lineOf(pieces_.back().range.end);
    const long last = lineOf(match.start);
    if (first == last)
        return true;
    return (!folded_ || pieces_.size() >= mostAmongFolds) && !bookmarkBetween(first, last);
}

bool ReplacingText::bookmarkBetween(long first, long last)
{
    if (bookmark_ < first) {
        const long next = editor_.send(S::SCI_MARKERNEXT, ulong(first), 1 << control::bookmarkMarker);
        bookmark_ = next < 0 ? noLine : next;
    }
    return bookmark_ <= last;
}

void ReplacingText::follow(const control::TextMatch &match, long shift, long grown)
{
    for (Followed &followed : followed_)
        if (match.end <= followed.place)
            followed.moved = followed.place + shift + grown;
        else if (match.start < followed.place)
            followed.moved = long(match.start) + shift;
}

void ReplacingText::commit()
{
    if (pieces_.empty())
        return;
    const std::array<long, 3> now = places();
    const bool still
        = std::equal(now.begin(), now.end(), followed_.begin(),
                     [](long place, const Followed &followed) { return place == followed.place; });
    if (folded_ && pieces_.size() > mostAmongFolds)
        editor_.send(S::SCI_FOLDALL, S::SC_FOLDACTION_EXPAND);
    control::UndoStep step(editor_);
    editor_.markStepCaret(now[1]);
    replacePieces();
    editor_.markStepCaret(still ? followed_[1].moved : editor_.send(S::SCI_GETCURRENTPOS));
    step.end();
    if (!still)
        return;
    editor_.send(S::SCI_SETANCHOR, ulong(followed_[0].moved));
    editor_.send(S::SCI_SETCURRENTPOS, ulong(followed_[1].moved));
    const long top = editor_.send(S::SCI_LINEFROMPOSITION, ulong(followed_[2].moved));
    editor_.send(S::SCI_SETFIRSTVISIBLELINE, ulong(editor_.send(S::SCI_VISIBLEFROMDOCLINE, ulong(top))));
}

void ReplacingText::replacePieces()
{
    long shift = 0;
    qsizetype textStart = 0;
    for (const Piece &piece : pieces_) {
        const qsizetype length = piece.textEnd - textStart;
        editor_.send(S::SCI_SETTARGETRANGE, ulong(piece.range.start + shift), long(piece.range.end + shift));
        // Never a null pointer, which the engine refuses even for no text.
        editor_.SendScintilla(S::SCI_REPLACETARGET, uintptr_t(length), texts_.constData() + textStart);
        shift += length - piece.range.length();
        textStart = piece.textEnd;
    }
}

} // namespace editor
