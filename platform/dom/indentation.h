// How lines within a subtree are indented, and how that changes when the subtree goes to another depth.
//
// Only blanks alone in element content are layout: where an element holds any text, CDATA section or
// reference to an entity, and where blanks are kept by xml:space, nothing is touched.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <optional>

namespace dom {

struct Indentation
{
    QByteArray base; // of the line the subtree begins on
    QByteArray unit; // one step deeper; empty when there is none to be seen
};

struct IndentChange
{
    Indentation from;
    Indentation to;

    bool changesNothing() const
    {
        return from.base == to.base && (from.unit.isEmpty() || from.unit == to.unit);
    }

    // Blanks between two pieces of markup as they are then: the same unless they break the line and the last
    // line begins as those of the subtree do.
    QByteArray applied(QByteArrayView blanks) const;
};

// Where the last line break in blanks begins; -1 when there is none.
qsizetype lastLineBreak(QByteArrayView blanks);

// What follows the last line break; nothing when the blanks stay on one line.
std::optional<QByteArray> indentIn(QByteArrayView blanks);

// Whether blanks within an element with that start tag are kept; nothing: as around it.
using KeepsBlanks = std::function<std::optional<bool>(QByteArrayView startTag)>;

// The markup of an element with its lines indented anew; nothing when that changes no byte. kept: whether
// blanks in the element's own content are.
std::optional<QByteArray> reindented(QByteArrayView element, const IndentChange &change, bool kept,
                                     const KeepsBlanks &keepsBlanks);

} // namespace dom
