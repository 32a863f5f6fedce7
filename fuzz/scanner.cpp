// Any bytes as the text in the editor: the markup found lies in it, in order, matching ends, and what each
// byte is does not depend on how the text is cut for reading.
#include "fuzz/require.h"
#include "platform/control/markup_styler.h"
#include "platform/control/matching_tag.h"

using namespace control;
using fuzz::require;

namespace {

void checkWithin(const Span &span, qsizetype from, qsizetype to)
{
    require(span.start >= from && span.length >= 0 && span.end() <= to, "a span lies where it may");
}

void checkMarkup(QByteArrayView text, bool html, qsizetype from)
{
    MarkupScanner scanner(text, html, from);
    qsizetype at = from;
    while (const auto markup = scanner.next()) {
        checkWithin(markup->whole, at, text.size());
        require(markup->whole.length > 0, "markup is not empty");
        require(text[markup->whole.start] == '<', "markup begins with its bracket");
        if (markup->kind != MarkupKind::Other)
            checkWithin(markup->name, markup->whole.start, markup->whole.end());
        at = markup->whole.end();
    }
}

void checkMatch(const MatchText &text, qsizetype caret)
{
    nearTagName(text.bytes, caret);
    const auto match = matchTag(text, caret);
    if (!match)
        return;
    require(match->markup.whole.touches(caret), "what matches is at the caret");
    checkWithin(match->markup.whole, 0, text.bytes.size());
    if (!match->partner)
        return;
    checkWithin(match->partner->whole, 0, text.bytes.size());
    const auto back = matchTag(text, match->partner->name.start);
    require(back && back->partner && back->partner->whole == match->markup.whole, "partners are mutual");
}

void checkStyles(QByteArrayView text, bool html, qsizetype step)
{
    MarkupState state;
    state.html = html;
    QByteArray whole(text.size(), '?');
    MarkupStyler styler(text, state, whole.data());
    require(styler.runTo(text.size(), true) == text.size(), "all is styled");
    QByteArray pieces(text.size(), '?');
    qsizetype at = 0;
    for (qsizetype end = 0; at < text.size();) {
        end = std::min(text.size(), end + step);
        MarkupStyler piece(text.sliced(at), state, pieces.data() + at);
        const qsizetype came = piece.runTo(end - at, end == text.size());
        require(came >= 0 && end - at - came <= 32, "little is left for the next time");
        at += came;
        state = piece.state();
    }
    require(pieces == whole && state == styler.state(), "pieces are the whole");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2)
        return 0;
    const bool html = (data[0] & 1U) != 0;
    const bool whole = (data[0] & 2U) != 0;
    const QByteArray bytes = fuzz::bytesOfInput(data + 2, size - 2);
    const MatchText text{bytes, whole, html};
    const qsizetype safe = firstSafePosition(text);
    require(safe >= 0 && safe <= bytes.size(), "reading begins in the text");
    checkMarkup(bytes, html, 0);
    checkMarkup(bytes, html, safe);
    const qsizetype step = 1 + bytes.size() / 64;
    for (qsizetype caret = data[1] % step; caret <= bytes.size(); caret += step)
        checkMatch(text, caret);
    checkStyles(bytes, html, 1 + data[1] % 40);
    return 0;
}
