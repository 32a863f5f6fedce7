// The names that a text uses, counted, for offering them again. Read in bounded time: of a long text the part
// around the caret at once, the rest bit by bit.
#pragma once

#include "platform/control/markup_scanner.h"

#include <QByteArray>
#include <QHash>
#include <QList>

namespace control {

class CodeEditor;

using NameCounts = QHash<QByteArray, int>;

// What one reading found.
struct NameTally
{
    NameCounts elements;
    NameCounts attributes;
    // By element, and by attribute.
    QHash<QByteArray, NameCounts> attributesOf;
    QHash<QByteArray, NameCounts> valuesOf;
    NameCounts entities; // those declared

    // Counts what a piece of markup of the bytes names.
    void count(QByteArrayView bytes, const Markup &markup);
    void clear() { *this = {}; }

private:
    void countTag(QByteArrayView bytes, const Markup &tag);
    void countDeclarations(QByteArrayView declaration);
};

class KnownNames
{
public:
    // Reads on for at most a few milliseconds; the markup that the caret stands in does not count.
    void look(const CodeEditor &editor, long caret);
    // The text is another.
    void forget();

    // The more frequent first, names of the same count by the alphabet.
    QList<QByteArray> elements() const;
    // Those seen on this element come before all others.
    QList<QByteArray> attributes(const QByteArray &element) const;
    QList<QByteArray> values(const QByteArray &attribute) const;
    // Those of every document come first.
    QList<QByteArray> entities() const;

private:
    bool readOn(const CodeEditor &editor, long caret);

    NameTally whole_; // of the last reading from start to end
    NameTally reading_; // of the reading under way
    NameTally near_; // around the caret
    long readTo_ = 0;
    quint64 revision_ = 0; // at which the reading began
    bool complete_ = false;
};

} // namespace control
