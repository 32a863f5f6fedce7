// The code editor: text with coloured markup, folding, bookmarks, undo and a hundred and forty-two commands.
// Positions in its text are bytes of UTF-8; lines and columns are counted from zero.
#pragma once

#include "platform/control/editor_accessible.h"
#include "platform/control/editor_control.h"
#include "platform/control/inserted_run.h"
#include "platform/control/scintilla.h"
#include "platform/control/shortcut_table.h"
#include "platform/control/tag_marks.h"
#include "platform/control/text_habits.h"

#include <QHash>
#include <QPoint>
#include <functional>

namespace control {

// From start to before end, in bytes.
struct ByteRange
{
    long start = 0;
    long end = 0;

    long length() const { return end - start; }
    bool operator==(const ByteRange &) const = default;
};

class CodeEditor : public QsciScintillaBase, public EditorControl
{
    Q_OBJECT

public:
    explicit CodeEditor(QWidget *parent = nullptr);

    QByteArray text() const override;
    quint64 revision() const override { return revision_; }
    void loadText(const QByteArray &utf8) override;
    void replaceText(const QByteArray &utf8) override;
    bool execute(int command) override;
    bool canUndo() const override;
    bool canRedo() const override;
    bool canCut() const override;
    bool canCopy() const override;
    bool canPaste() const override;
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    bool whiteSpaceShown() const override;
    void setWhiteSpaceShown(bool shown) override;
    int highlightedLine() const override;
    // A line behind the last one counts as the last. Any change of the text takes the highlight away.
    void setHighlightedLine(int line) override;
    void placeCaret(int line, int column) override;
    int caretLine() const override;
    int caretColumn() const override;
    // One step of undo; line ends become the document's own; the caret ends up behind the new text.
    void replaceSelection(const QByteArray &utf8) override;
    void setLanguage(Language language) override;
    void giveFocus() override;

    Language language() const { return language_; }
    int lineCount() const;

    bool lineNumbersShown() const { return lineNumbersShown_; }
    void setLineNumbersShown(bool shown);

    // The keys of this editor; they work while it has the focus.
    ShortcutTable &shortcuts() { return shortcuts_; }

    // Lets somebody carry out a command that is no editing: find, macros, properties. The handler says
    // whether it could. A command without a handler is refused.
    void setServiceHandler(int command, const std::function<bool()> &handler);

    // The engine itself, for commands and for what stands beside the editor.
    long send(unsigned message, unsigned long first = 0, long second = 0) const;

    // Part of the text; the selection, as one range even when it is a rectangle.
    QByteArray bytes(const ByteRange &range) const;
    ByteRange selection() const;
    // Replaces the part that differs as one step of undo; false when there is no difference.
    bool replaceRange(const ByteRange &range, const QByteArray &utf8);
    const TextHabits &habits() const { return habits_; }
    const InsertedRun &insertedRun() const { return inserted_; }
    // Puts the caret at a byte position and scrolls it into view, to the middle when it was out of sight.
    void showPosition(long position);

Q_SIGNALS:
    // The text changed, whoever changed it; once for all that a command or a key changed.
    void textEdited();
    // The caret or the selection moved.
    void caretMoved();
    // What can be undone, redone, cut, copied or pasted may have changed.
    void commandStateChanged();
    // The user asks for a context menu, with the mouse or the keyboard. There is none of its own.
    void contextMenuRequested(const QPoint &globalPosition);
    // A command that is carried out elsewhere was called; emitted before its handler is asked.
    void serviceRequested(int command);

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // What was last told to the outside.
    struct Told
    {
        quint64 revision = 0;
        long caret = 0;
        long anchor = 0;
        int commands = 0;
        bool operator==(const Told &) const = default;
    };

    void noticeChange(int position, int kind, int length);
    void settle();
    void settleSoon();
    Told state() const;
    void takeHabits(QByteArrayView text);
    void watchText(bool watched);
    bool claims(const QKeyEvent &event) const;
    bool callService(int command);

    quint64 revision_ = 0;
    Told told_;
    bool settlingSoon_ = false;
    bool highlighted_ = false;
    TagMarks tagMarks_;
    bool lineNumbersShown_ = true;
    int fittedLines_ = 0;
    Language language_ = Language::Plain;
    TextHabits habits_;
    InsertedRun inserted_;
    ShortcutTable shortcuts_;
    QKeySequence firstStroke_;
    QHash<int, std::function<bool()>> services_;
    AccessibleText accessible_;
};

} // namespace control
