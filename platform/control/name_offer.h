// Offers the names known from the text at the caret, in a list of the editing engine's.
#pragma once

#include "platform/control/known_names.h"

#include <QByteArray>
#include <QList>

namespace control {

class CodeEditor;

// What could stand at the caret.
struct Offer
{
    QList<QByteArray> words; // most likely first; all begin with what is written already
    long start = 0; // where the word begins in the text
    QByteArray tail; // what belongs behind the word, and is not there yet
};

class NameOffer
{
public:
    // What is known to fit at the caret, whatever of it is written already. Takes a few milliseconds at most.
    Offer fitting(const CodeEditor &editor);

    // Shows the list when something fits; false when nothing does, or the editor is not in sight.
    bool show(CodeEditor &editor);
    // After a letter was typed, or deleted from the word: opens the list at the first letter of a word,
    // narrows an open one, and closes it when nothing is left to offer. It opens again when letters that fit
    // nothing are deleted.
    void follow(CodeEditor &editor, bool mayOpen);
    bool wasShown() const { return shownAt_ >= 0; } // for a word before
    static bool isOpen(const CodeEditor &editor);
    static void close(CodeEditor &editor);
    // What is missing at the caret of the word chosen in the list; empty when nothing is.
    QByteArray chosenRest(const CodeEditor &editor) const;
    QByteArray restOf(const CodeEditor &editor, const QByteArray &word) const;

    void forget() { names_.forget(); }

private:
    bool list(CodeEditor &editor, bool withExactOnly);

    KnownNames names_;
    Offer offer_; // of the list that is open
    long shownAt_ = -1; // where the word begins for which the list was shown last; -1 for none
};

// Only the words that begin so.
QList<QByteArray> beginningWith(const QList<QByteArray> &words, const QByteArray &beginning);

} // namespace control
