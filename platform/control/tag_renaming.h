// Keeps the names of a start tag and its end tag equal while one of them is edited.
#pragma once

#include "platform/control/macro.h"
#include "platform/control/markup_scanner.h"

#include <QByteArray>
#include <optional>

namespace control {

class CodeEditor;

class TagRenaming
{
public:
    // Around a step. A step that may change the name opens a step of undo, which after() ends.
    void before(CodeEditor &editor, const Step &step);
    // With mergeable, letters typed or deleted one after the other are undone together.
    void after(CodeEditor &editor, const Step &step, bool mergeable);

private:
    // The names of two tags that match, for one state of the text. A name may be empty in between.
    struct Link
    {
        Span own;
        Span partner;
        quint64 revision = 0;
    };
    // Steps of one kind that are undone together.
    struct Run
    {
        int command = 0;
        QByteArray nameBefore;
        long caretBefore = 0;
        quint64 revision = 0;
    };

    std::optional<Link> linkAt(const CodeEditor &editor, const Span &selected) const;
    bool rename(CodeEditor &editor);
    void merge(CodeEditor &editor);

    std::optional<Link> link_; // of the step before this one, until the text changes otherwise
    std::optional<Link> armed_; // of the step under way
    std::optional<Run> run_;
    QByteArray nameBefore_;
    long caretBefore_ = 0;
    long lengthBefore_ = 0;
    bool runGoesOn_ = false;
};

} // namespace control
