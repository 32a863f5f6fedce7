// Does along what a user means by a key: the closing tag, the other tag's name, the names known so far.
#pragma once

#include "platform/control/macro.h"
#include "platform/control/name_offer.h"
#include "platform/control/tag_renaming.h"
#include "platform/control/undo_step.h"

namespace control {

class CodeEditor;

class TypingHelp
{
public:
    // Part of the editor.
    explicit TypingHelp(CodeEditor &editor) : editor_(editor) { }

    // Lets an open list of names have a step that is meant for it: moving in it, taking a name, closing it. A
    // name taken is typed, as a step of its own. False when the step is to be carried out as ever.
    bool takes(const Step &step);

    // Around every step that the user or a macro takes. What is done along belongs to the step's undo.
    void before(const Step &step);
    void after(const Step &step);

    // Types what the word in the list has more than is written.
    void takeWord(const QByteArray &word);
    // Shows what fits at the caret; false when nothing does. Nothing needs to be shown to a macro being
    // played.
    bool offerNames();
    // What is known to fit at the caret.
    Offer namesFitting() { return offer_.fitting(editor_); }

    // The text is another.
    void forget();

private:
    void closeTag(const Step &step);
    bool repeatsCompletion(const Step &step);
    void takeBackByHand();
    bool mayClose() const;
    void offerAfter(const Step &step);
    bool isAlone() const;

    CodeEditor &editor_;
    TagRenaming renaming_;
    NameOffer offer_;
    std::optional<UndoStep> undo_; // of the step under way, when something is done along
    QByteArray completion_; // to be typed along with it
    // What was typed along last, where that ended, and how much of it was then typed by hand all the same.
    QByteArray typedAlong_;
    long typedAlongEnd_ = 0;
    QByteArray byHand_;
    int depth_ = 0; // how deep steps within steps go
    bool alone_ = false; // the next step is no part of anything larger, which is undone as one
};

} // namespace control
