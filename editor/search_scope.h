// The part of an editor's text that is searched: all of it, or a range that follows what is edited.
#pragma once

#include "editor/editor_text.h"

#include <QObject>

namespace editor {

class SearchScope : public QObject
{
public:
    // Belongs to parent. The editor outlives it.
    SearchScope(control::CodeEditor &editor, QObject *parent);

    // Limits the search to a range, which is shown softly in the text.
    void limitTo(const control::TextMatch &range);
    void lift();
    bool isLimited() const { return limited_; }
    // The range, or all the text.
    control::TextMatch range() const;
    // The text with the limits.
    control::SearchArea area() const { return {editor_.textInPlace(), range()}; }
    // To be called when the text was edited. A new document lifts the limit.
    void followText();
    // Colours for the ground of the text.
    void dress();

private:
    void noticeChange(qsizetype position, int kind, qsizetype length);
    void mark();

    control::CodeEditor &editor_;
    control::TextMatch range_;
    bool limited_ = false;
    quint64 followed_ = 0; // the revision of the text that the range is right for
};

} // namespace editor
