// Keeps the names of a start tag and its end tag equal while one of them is edited.
#pragma once

#include "platform/control/macro.h"
#include "platform/control/markup_scanner.h"
#include "platform/control/undo_step.h"

#include <QByteArray>
#include <optional>

namespace control {

class CodeEditor;

class TagRenaming
{
public:
    // Around a step. A step that may change the name opens a step of undo, which after() ends. A step within
    // a step has these of its own, after which there is nothing left to be done for the outer one.
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

    // A step under way that may change a name.
    struct Armed
    {
        Link link;
        QByteArray nameBefore;
        long caretBefore = 0;
        long lengthBefore = 0;
        bool runGoesOn = false;
        UndoStep undo;
    };

    std::optional<Link> linkAt(const CodeEditor &editor, const Span &selected) const;
    static bool rename(CodeEditor &editor, Armed &armed);
    void merge(CodeEditor &editor);

    std::optional<Link> link_; // of the step before this one, until the text changes otherwise
    std::optional<Armed> armed_; // from before() to after(), which takes it
    std::optional<Run> run_;
};

} // namespace control
