#include "editor/match_marks.h"

#include "editor/search_scope.h"

#include <QColor>
#include <algorithm>

namespace editor {

namespace {

using S = QsciScintillaBase;

constexpr qsizetype longestView = 512 << 10; // bytes; of lines longer than that only the beginning is marked
constexpr qint64 patience = 60; // milliseconds, for each picture of the text

constexpr long engineColour(QRgb colour)
{
    return long((colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF));
}

constexpr MarkColours onLight{engineColour(0xE89A00), engineColour(0x3C78C8)};
constexpr MarkColours onDark{engineColour(0xF0B030), engineColour(0x8FBCF5)};

} // namespace

MarkColours markColours(const control::CodeEditor &editor)
{
    const long ground = editor.send(S::SCI_STYLEGETBACK, S::STYLE_DEFAULT);
    const QColor colour(int(ground & 0xFF), int(ground >> 8 & 0xFF), int(ground >> 16 & 0xFF));
    return colour.lightness() < 128 ? onDark : onLight;
}

MatchMarks::MatchMarks(control::CodeEditor &editor, const SearchScope &scope, QObject *parent)
    : QObject(parent), editor_(editor), scope_(scope)
{
    editor.send(S::SCI_INDICSETSTYLE, matchIndicator, S::INDIC_STRAIGHTBOX);
    editor.send(S::SCI_INDICSETUNDER, matchIndicator, 1);
    soon_.setSingleShot(true);
    soon_.setInterval(0);
    connect(&soon_, &QTimer::timeout, this, &MatchMarks::update);
    connect(&editor, &QsciScintillaBase::SCN_UPDATEUI, this, [this] {
        if (search_ && !soon_.isActive())
            soon_.start();
    });
}

void MatchMarks::show(std::shared_ptr<const control::TextSearch> search)
{
    search_ = std::move(search);
    update();
}

MatchMarks::View MatchMarks::view() const
{
    const long first = editor_.send(S::SCI_GETFIRSTVISIBLELINE);
    const auto line
        = [&](long shown) { return ulong(editor_.send(S::SCI_DOCLINEFROMVISIBLE, ulong(shown))); };
    const qsizetype start = editor_.send(S::SCI_POSITIONFROMLINE, line(first));
    const qsizetype end
        = editor_.send(S::SCI_GETLINEENDPOSITION, line(first + editor_.send(S::SCI_LINESONSCREEN)));
    return {editor_.revision(),
            {start, std::clamp(end, start, start + longestView)},
            scope_.range(),
            selectionOf(editor_),
            search_.get()};
}

// Marking is a change to the engine, which tells of it like of any other: without need nothing is marked
// anew.
void MatchMarks::update()
{
    const View now = search_ ? view() : View{};
    if (now == marked_)
        return;
    clear();
    marked_ = now;
    if (search_)
        markIn(now);
}

void MatchMarks::clear()
{
    if (marked_.search == nullptr)
        return;
    editor_.send(S::SCI_SETINDICATORCURRENT, matchIndicator);
    editor_.send(S::SCI_INDICATORCLEARRANGE, 0, editor_.send(S::SCI_GETLENGTH));
}

// Only the lines in sight are asked for, which moves nothing of a large text.
void MatchMarks::markIn(const View &view)
{
    if (view.lines.length() == 0)
        return;
    editor_.send(S::SCI_INDICSETFORE, matchIndicator, markColours(editor_).match);
    editor_.send(S::SCI_INDICSETALPHA, matchIndicator, 90);
    editor_.send(S::SCI_INDICSETOUTLINEALPHA, matchIndicator, 170);
    editor_.send(S::SCI_SETINDICATORCURRENT, matchIndicator);
    const qsizetype first = view.lines.start;
    const long bytes = editor_.send(S::SCI_GETRANGEPOINTER, ulong(first), long(view.lines.length()));
    // The engine hands pointers out as numbers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const QByteArrayView text(reinterpret_cast<const char *>(bytes), view.lines.length());
    const qsizetype start = std::max(view.scope.start, first) - first;
    const qsizetype end = std::min(view.scope.end, view.lines.end) - first;
    if (start > end)
        return;
    const control::SearchArea area(text, {start, end});
    const QDeadlineTimer deadline(patience);
    control::SearchResult found = search_->next(area, start, deadline);
    while (found && !deadline.hasExpired()) {
        const bool selected = found.match.start + first == view.selected.start
            && found.match.end + first == view.selected.end;
        if (found.match.length() > 0 && !selected)
            editor_.send(S::SCI_INDICATORFILLRANGE, ulong(first + found.match.start),
                         long(found.match.length()));
        found = search_->next(area, control::TextSearch::behind(text, found.match), deadline);
    }
}

} // namespace editor
