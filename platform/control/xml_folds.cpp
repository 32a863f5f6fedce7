// How the lines of an XML text fold.
#include "platform/control/xml_styling.h"

#include "platform/control/code_editor.h"

#include <algorithm>
#include <limits>

namespace control {

namespace {

using S = QsciScintillaBase;

// A text is read in stretches of this many lines.
constexpr long stretch = 4096;

// Goes through the text from one line on, line by line.
class LineWalk
{
public:
    LineWalk(const CodeEditor &editor, const MarkupSource &source, const MarkupMap::Place &from, long line)
        : editor_(editor), source_(source), place_(from), line_(line)
    { }

    // Calls with each line and its depth before and after, until told to stop.
    template <typename Visit>
    void run(long lastLine, Visit visit)
    {
        while (line_ <= lastLine) {
            const long last = std::min(lastLine, line_ + stretch);
            const long end = startOf(last + 1);
            MarkupStyler styler(source_.read(place_.at, end), place_.state);
            styler.runTo(startOf(line_) - place_.at, false);
            for (; line_ <= last; ++line_) {
                const int before = styler.state().depth;
                const long to = startOf(line_ + 1);
                styler.runTo(to - place_.at, to == source_.length);
                if (!visit(line_, before, styler.state().depth))
                    return;
            }
            place_ = {end, styler.state()};
        }
    }

private:
    long startOf(long line) const
    {
        return line >= editor_.lineCount() ? source_.length
                                           : editor_.send(S::SCI_POSITIONFROMLINE, ulong(line));
    }

    const CodeEditor &editor_;
    const MarkupSource &source_;
    MarkupMap::Place place_;
    long line_;
};

} // namespace

MarkupMap::Place XmlStyling::textStart() const
{
    MarkupMap::Place start;
    start.state.html = isHtml();
    return start;
}

int XmlStyling::depthOf(long line)
{
    const long start = lineStart(line);
    knowTo(start);
    return placeAt(start).state.depth;
}

bool XmlStyling::beginsBlock(long line) { return depthOf(line + 1) > depthOf(line); }

long XmlStyling::blockStart(long line)
{
    if (beginsBlock(line))
        return line;
    const int depth = depthOf(line);
    long found = -1;
    for (long before = lineStart(line); before > 0 && found < 0;) {
        const MarkupMap::Place from = map().lowerStretch(before, depth);
        found = lastLower(from, before, depth);
        before = from.at;
    }
    return found;
}

// The last line from a place on, and before another, that begins in fewer elements and begins a block.
long XmlStyling::lastLower(const MarkupMap::Place &from, long before, int depth)
{
    long found = -1;
    const MarkupSource text = source();
    const long first = editor_.send(S::SCI_LINEFROMPOSITION, ulong(from.at));
    const long last = editor_.send(S::SCI_LINEFROMPOSITION, ulong(before - 1));
    const MarkupMap::Place start = map().placeAt(text, lineStart(first));
    LineWalk(editor_, text, start, first).run(last, [&](long line, int beginning, int end) {
        if (beginning < depth && end > beginning)
            found = line;
        return true;
    });
    return found;
}

void XmlStyling::knowBlock(long line)
{
    const int depth = depthOf(line);
    const MarkupSource text = source();
    const MarkupMap::Place start = map().placeAt(text, lineStart(line));
    LineWalk(editor_, text, start, line).run(editor_.lineCount() - 1, [&](long at, int before, int after) {
        setLevel(at, before, after);
        return at == line || before > depth;
    });
}

void XmlStyling::knowAll(int outermost)
{
    const Levelled now{editor_.revision(), round_, outermost};
    if (std::exchange(levelled_, now) == now)
        return;
    base_ = outermost;
    const MarkupSource text = source();
    knowTo(text.length);
    QWidget &view = *editor_.viewport();
    // Each level would else have the margin drawn anew.
    view.setUpdatesEnabled(false);
    LineWalk(editor_, text, textStart(), 0)
        .run(editor_.lineCount() - 1, [&](long line, int before, int after) {
            setLevel(line, before, after);
            return true;
        });
    view.setUpdatesEnabled(true);
}

std::optional<int> XmlStyling::innerDepth() const
{
    constexpr int none = std::numeric_limits<int>::max();
    int outer = none;
    int inner = none;
    const MarkupSource text = source();
    LineWalk(editor_, text, textStart(), 0).run(editor_.lineCount() - 1, [&](long, int before, int after) {
        if (after > before && before < outer) {
            inner = std::exchange(outer, before);
        } else if (after > before && before > outer && before < inner) {
            inner = before;
        }
        return inner != outer + 1;
    });
    return inner == none ? std::nullopt : std::optional(inner);
}

} // namespace control
