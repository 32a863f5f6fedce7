// Where the larger elements of a source begin and end.
//
// Listing the children of an element means finding where each of them ends. Without help that would scan the
// same text once for every level above it. The first scan therefore notes an element whenever it closes over
// at least `grain` bytes that no noted element below it covers: at most one entry for every `grain` bytes of
// text, and no later scan reads more than about `grain` bytes of any subtree it only wants to step over.
#pragma once

#include <QtGlobal>
#include <vector>

namespace dom {

class StructureIndex
{
public:
    static constexpr quint32 grain = 1024;

    struct Entry
    {
        quint32 begin; // the "<" of the start tag
        quint32 end; // past the ">" of the end tag
        quint32 nodes; // in the subtree, the element included
    };

    // Entries arrive in the order of their ends; finish() puts them into the order of their beginnings.
    void add(const Entry &entry) { entries_.push_back(entry); }
    void finish();

    // A reader that only goes forward through the text.
    class Cursor
    {
    public:
        Cursor(const StructureIndex &index, quint32 from);
        // The entry of the element that begins exactly here, or null. Offsets must not decrease.
        const Entry *at(quint32 begin);

    private:
        const Entry *next_;
        const Entry *last_;
    };

    qsizetype size() const { return qsizetype(entries_.size()); }

private:
    std::vector<Entry> entries_;
};

} // namespace dom
