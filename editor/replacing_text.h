// What matches are replaced by, gathered match by match to as few replacements as can be: those that stand
// near each other are one, with the text between them, unless that cost a bookmark or a fold. An engine that
// is asked seldom is quick, however many matches there are.
#pragma once

#include "editor/editor_text.h"

#include <array>
#include <vector>

namespace editor {

class ReplacingText
{
public:
    // The editor outlives it; its text does not change before commit.
    explicit ReplacingText(control::CodeEditor &editor);

    // Where what replaces the next match is appended.
    QByteArray &texts() { return texts_; }
    // The next match, in order; what replaces it has been appended.
    void add(QByteArrayView text, const control::TextMatch &match);
    qsizetype count() const { return count_; }
    // Changes the text, as one step of undo. The caret and what is in sight stay where they are.
    void commit();

private:
    struct Piece
    {
        control::TextMatch range;
        qsizetype textEnd; // of what comes there instead
    };
    // A place in the text, and where it goes.
    struct Followed
    {
        long place;
        long moved;
    };

    bool joins(const control::TextMatch &match);
    bool bookmarkBetween(long first, long last);
    void follow(const control::TextMatch &match, long shift, long grown);
    std::array<long, 3> places() const;
    void replacePieces();

    control::CodeEditor &editor_;
    std::vector<Piece> pieces_;
    QByteArray texts_;
    qsizetype count_ = 0;
    qsizetype taken_ = 0; // of texts_
    long shift_ = 0; // what the text behind the last match has moved by
    bool folded_;
    long bookmark_ = -1; // the next line with one, from the line looked at last
    std::array<Followed, 3> followed_; // anchor, caret and the start of the first line in sight
};

} // namespace editor
