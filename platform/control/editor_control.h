// What the program asks of its code editor. The widget behind it is code_editor.h; tests of the
// document's life stand in a plain text for it.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

namespace control {

// The markup that the editor colours and folds.
enum class Language
{
    Plain,
    Xml,
    Html
};

class EditorControl
{
public:
    virtual ~EditorControl() = default;

    // The whole text, UTF-8. Line ends are kept as they are.
    virtual QByteArray text() const = 0;

    // The whole text where it lies, for one look at it: nothing is copied, and the next change of the editor
    // makes it invalid.
    virtual QByteArray textInPlace() const = 0;

    // Counts every change of the text, undo and redo included; equal numbers mean equal text.
    virtual quint64 revision() const = 0;

    // Puts a new document into the editor: no undo back over it, caret at the start.
    virtual void loadText(const QByteArray &utf8) = 0;

    // Replaces the text as one undoable edit, touching only the part that differs; never the clipboard.
    virtual void replaceText(const QByteArray &utf8) = 0;

    // The same by another document's text. Undo and redo tell of every such step that they cross, by its
    // number.
    virtual void replaceDocument(const QByteArray &utf8, int number) = 0;
    using Crossed = std::function<void(int number, bool undone)>;
    virtual void tellCrossing(Crossed told) = 0;

    // Executes a numbered command (100 to 241); false when there is none of that number or it cannot act.
    virtual bool execute(int command) = 0;

    virtual bool canUndo() const = 0;
    virtual bool canRedo() const = 0;
    virtual bool canCut() const = 0;
    virtual bool canCopy() const = 0;
    virtual bool canPaste() const = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
    virtual void cut() = 0;
    virtual void copy() = 0;
    virtual void paste() = 0;

    virtual bool whiteSpaceShown() const = 0;
    virtual void setWhiteSpaceShown(bool shown) = 0;

    // The highlighted line, zero-based; -1 for none.
    virtual int highlightedLine() const = 0;
    virtual void setHighlightedLine(int line) = 0;

    // Caret position: zero-based line; column in characters from 0. Out-of-range values are clamped.
    virtual void placeCaret(int line, int column) = 0;
    virtual int caretLine() const = 0;
    virtual int caretColumn() const = 0;

    // From this character on, 256 of them stand for bytes that are no characters and are shown as such; 0 for
    // none.
    virtual void showBytes(char32_t) { }

    virtual void replaceSelection(const QByteArray &utf8) = 0;
    virtual void setLanguage(Language language) = 0;
    virtual void giveFocus() = 0;
};

} // namespace control
