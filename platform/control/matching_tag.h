// Finds the tag at the caret and the one that closes or opens its element.
#pragma once

#include "platform/control/markup_scanner.h"

namespace control {

// How many bytes before and after the caret are looked at.
inline constexpr qsizetype matchReach = qsizetype{1024} * 1024;

// A stretch of a document in which tags are matched.
struct MatchText
{
    QByteArrayView bytes;
    // Whether the bytes begin where the document begins; otherwise they may begin in the middle of a comment.
    bool fromDocumentStart = true;
    bool html = false;
};

struct TagMatch
{
    // What the caret stands in, or just behind.
    Markup markup;
    // The other tag of its element, when there is one within the bytes.
    std::optional<Markup> partner;
};

// Where reading can begin: behind a comment or CDATA section that began before the bytes do.
qsizetype firstSafePosition(const MatchText &text);

// Nothing when the caret touches no markup.
std::optional<TagMatch> matchTag(const MatchText &text, qsizetype caret);

// Whether the caret touches what looks like the name of a tag; looks at the nearest bytes only.
bool nearTagName(QByteArrayView bytes, qsizetype caret);

} // namespace control
