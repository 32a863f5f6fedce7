#include "editor/search_scope.h"

#include "editor/match_marks.h"

#include <algorithm>

namespace editor {

namespace {

using S = QsciScintillaBase;

} // namespace

SearchScope::SearchScope(control::CodeEditor &editor, QObject *parent) : QObject(parent), editor_(editor)
{
    editor.send(S::SCI_INDICSETSTYLE, scopeIndicator, S::INDIC_STRAIGHTBOX);
    editor.send(S::SCI_INDICSETUNDER, scopeIndicator, 1);
    connect(
        &editor, &QsciScintillaBase::SCN_MODIFIED, this,
        [this](int position, int kind, const char *, int length) { noticeChange(position, kind, length); });
}

void SearchScope::limitTo(const control::TextMatch &range)
{
    lift();
    limited_ = true;
    range_ = range;
    followed_ = editor_.revision();
    dress();
    mark();
}

void SearchScope::lift()
{
    if (!std::exchange(limited_, false))
        return;
    editor_.send(S::SCI_SETINDICATORCURRENT, scopeIndicator);
    editor_.send(S::SCI_INDICATORCLEARRANGE, 0, editor_.send(S::SCI_GETLENGTH));
}

control::TextMatch SearchScope::range() const
{
    return limited_ ? range_ : control::TextMatch{0, editor_.send(S::SCI_GETLENGTH)};
}

// What is inserted at either end is taken in: it is what was put in place of a match there.
void SearchScope::noticeChange(qsizetype position, int kind, qsizetype length)
{
    if (!limited_ || (kind & (S::SC_MOD_BEFOREINSERT | S::SC_MOD_BEFOREDELETE)) == 0)
        return;
    ++followed_;
    if ((kind & S::SC_MOD_BEFOREINSERT) != 0) {
        range_.start += position < range_.start ? length : 0;
        range_.end += position <= range_.end ? length : 0;
    } else {
        const auto moved
            = [&](qsizetype place) { return place <= position ? place : std::max(position, place - length); };
        range_ = {moved(range_.start), moved(range_.end)};
    }
}

// A new document is a change that the engine did not tell of.
void SearchScope::followText()
{
    if (!limited_)
        return;
    if (followed_ != editor_.revision())
        lift();
    else
        mark();
}

void SearchScope::mark()
{
    editor_.send(S::SCI_SETINDICATORCURRENT, scopeIndicator);
    if (range_.length() > 0)
        editor_.send(S::SCI_INDICATORFILLRANGE, ulong(range_.start), long(range_.length()));
}

void SearchScope::dress()
{
    const MarkColours colours = markColours(editor_);
    editor_.send(S::SCI_INDICSETFORE, scopeIndicator, colours.scope);
    editor_.send(S::SCI_INDICSETALPHA, scopeIndicator, 32);
    editor_.send(S::SCI_INDICSETOUTLINEALPHA, scopeIndicator, 32);
}

} // namespace editor
