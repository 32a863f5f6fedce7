#include "editor/replace_all.h"

#include "platform/busy_pointer.h"

namespace editor {

namespace {

constexpr int firstSlice = 250; // milliseconds
constexpr int slice = 40; // milliseconds

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
    text_.emplace(editor_);
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
              replacement_->appendTo(text_->texts(), text, walk_->search());
              text_->add(text, match);
          });
    switch (state) {
    case MatchWalk::State::Going:
        Q_EMIT progressed(walk_->progress());
        break;
    case MatchWalk::State::Done:
        commit();
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

void ReplaceAll::commit()
{
    const platform::BusyPointer busy;
    text_->commit();
}

void ReplaceAll::finish(Outcome outcome)
{
    const qsizetype count = outcome == Outcome::Replaced ? text_->count() : 0;
    slices_.stop();
    walk_.reset();
    replacement_.reset();
    text_.reset();
    Q_EMIT finished(outcome, count);
}

} // namespace editor
