// What an XML or HTML text is at places some way apart, so that any part of it can be read from a place near
// by. Kept up with edits: behind an edit the text is read again only until it is the same as it was.
#pragma once

#include "platform/control/markup_styler.h"

#include <functional>
#include <vector>

namespace control {

// A text that is read in stretches.
struct MarkupSource
{
    std::function<QByteArrayView(long start, long end)> read;
    long length = 0;
};

class MarkupMap
{
public:
    struct Place
    {
        long at = 0;
        MarkupState state;
    };

    // The text is another one.
    void clear(bool html = false);
    // The text is about to change so; what is told must be told of every change.
    void inserted(long at, long length);
    void deleted(long at, long length);

    // Reads on, for so many bytes at least when there are as many to be read.
    void advance(const MarkupSource &source, long bytes);
    // Up to where it is known what the text is.
    long known(const MarkupSource &source) const;
    bool isComplete() const { return complete_; }

    // The place itself where its text can be read from, or one a few bytes before it. The place has to
    // be known.
    Place placeAt(const MarkupSource &source, long at) const;
    // The same for a place that is not known, after what stands in front of it. Nearly always right, but the
    // depth is only right in relation to what follows.
    static Place guessAt(const MarkupSource &source, long at, bool html = false);

    // Where to read from to find the last place before that one with less depth; no place with less depth
    // lies between the stretch beginning there and that one. Ends at the text's beginning.
    Place lowerStretch(long before, int depth) const;

private:
    struct Point
    {
        long at = 0;
        MarkupState state;
        int lowest = 0; // depth up to the next point
    };

    size_t pointAt(long at) const;
    long nextStop(const MarkupSource &source, QByteArrayView text, long end) const;
    bool meets(const Point &reached, long stop);
    void aboutToChange();
    void changed(long at, long end);

    std::vector<Point> points_ = {{}};
    size_t known_ = 1; // points; those behind are as they were before an edit
    bool complete_ = false; // the text behind the last point has been read as well
    bool covered_ = false; // the points reach to the end, even if not all of them are known
    long changedUpTo_ = 0; // nothing before this is as it was
};

} // namespace control
