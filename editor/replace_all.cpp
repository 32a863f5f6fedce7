#include "editor/replace_all.h"

namespace editor {

namespace {

using S = QsciScintillaBase;

constexpr int firstSlice = 250; // milliseconds
constexpr int slice = 40; // milliseconds

// One by one, bookmarks and folded lines stay where they are; of more, the text between is replaced too.
constexpr size_t mostOneByOne = 200'000;

} // namespace

ReplaceAll::ReplaceAll(control::CodeEditor &editor, QObject *parent) : QObject(parent), editor_(editor)
{
    slices_.setInterval(0);
    connect(&slices_, &QTimer::timeout, this, [this] { advance(slice); });
}

void ReplaceAll::start(std::shared_ptr<const control::TextSearch> search,
                       const control::ReplacementText &replacement, const control::TextMatch &range)
{
    walk_.emplace(editor_, std::move(search), range);
    replacement_ = replacement;
    slices_.start();
    advance(firstSlice);
}

void ReplaceAll::cancel()
{
    if (isRunning())
        finish(Outcome::Cancelled);
}

void ReplaceAll::advance(int milliseconds)
{
    const MatchWalk::State state
        = walk_->advance(milliseconds, [this](QByteArrayView text, const control::TextMatch &match) {
              replacement_->appendTo(texts_, text, walk_->search());
              edits_.push_back({match, texts_.size()});
          });
    switch (state) {
    case MatchWalk::State::Going:
        Q_EMIT progressed(walk_->progress());
        break;
    case MatchWalk::State::Done:
        apply();
        finish(Outcome::Replaced);
        break;
    case MatchWalk::State::TextChanged:
        finish(Outcome::TextChanged);
        break;
    case MatchWalk::State::GaveUp:
        finish(Outcome::GaveUp);
        break;
    }
}

void ReplaceAll::finish(Outcome outcome)
{
    slices_.stop();
    walk_.reset();
    replacement_.reset();
    texts_.clear();
    const std::vector<Edit> edits = std::exchange(edits_, {});
    Q_EMIT finished(outcome, outcome == Outcome::Replaced ? qsizetype(edits.size()) : 0);
}

QByteArrayView ReplaceAll::textOf(size_t edit) const
{
    const qsizetype start = edit == 0 ? 0 : edits_[edit - 1].textEnd;
    // Never a null pointer, which the engine refuses even for no text.
    return {texts_.constData() + start, edits_[edit].textEnd - start};
}

void ReplaceAll::apply()
{
    if (edits_.empty())
        return;
    editor_.send(S::SCI_BEGINUNDOACTION);
    if (edits_.size() <= mostOneByOne)
        applyOneByOne();
    else
        applyAsOne();
    editor_.send(S::SCI_ENDUNDOACTION);
}

void ReplaceAll::applyOneByOne()
{
    qsizetype shift = 0;
    for (size_t edit = 0; edit < edits_.size(); ++edit) {
        const control::TextMatch &match = edits_[edit].match;
        const QByteArrayView text = textOf(edit);
        editor_.send(S::SCI_SETTARGETRANGE, ulong(match.start + shift), long(match.end + shift));
        editor_.SendScintilla(S::SCI_REPLACETARGET, uintptr_t(text.size()), text.data());
        shift += text.size() - match.length();
    }
}

void ReplaceAll::applyAsOne()
{
    const int line = editor_.caretLine();
    const int column = editor_.caretColumn();
    const control::TextMatch whole{edits_.front().match.start, edits_.back().match.end};
    const QByteArrayView before = textInPlace(editor_);
    QByteArray after;
    after.reserve(whole.length() + texts_.size());
    qsizetype copied = whole.start;
    for (size_t edit = 0; edit < edits_.size(); ++edit) {
        after.append(before.sliced(copied, edits_[edit].match.start - copied)).append(textOf(edit));
        copied = edits_[edit].match.end;
    }
    editor_.replaceRange({long(whole.start), long(whole.end)}, after);
    editor_.placeCaret(line, column);
}

} // namespace editor
