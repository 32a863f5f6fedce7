// The places that the caret has visited, in order, for stepping back and forth between them.
#pragma once

#include <QList>

namespace editor {

// Zero-based.
struct CaretPosition
{
    int line = 0;
    int column = 0;
    bool operator==(const CaretPosition &) const = default;
};

class LineHistory
{
public:
    // More are not kept; the oldest go first.
    static constexpr qsizetype bound = 1000;

    // Begins anew with one entry.
    void restart(CaretPosition position);

    // The caret moved. A move within the current entry's line only moves that entry, so that typing does not
    // fill the history; any other drops the entries after the current one and becomes the last.
    void record(CaretPosition position);

    bool hasEarlier() const { return current_ > 0; }
    bool hasLater() const { return current_ + 1 < entries_.size(); }

    // Steps to the neighbouring entry, which becomes the current one. Stays where it is at either end.
    CaretPosition stepBack();
    CaretPosition stepForward();

    qsizetype size() const { return entries_.size(); }

private:
    QList<CaretPosition> entries_{CaretPosition{}};
    qsizetype current_ = 0;
};

} // namespace editor
