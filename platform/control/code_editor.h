// The code editor: text with coloured markup, folding, bookmarks, undo and a hundred and forty-two commands.
// Positions in its text are bytes of UTF-8; lines and columns are counted from zero.
#pragma once

#include "platform/control/column_count.h"
#include "platform/control/editor_accessible.h"
#include "platform/control/editor_control.h"
#include "platform/control/editor_library.h"
#include "platform/control/editor_properties.h"
#include "platform/control/inserted_run.h"
#include "platform/control/line_numbers.h"
#include "platform/control/macro.h"
#include "platform/control/macro_player.h"
#include "platform/control/scintilla.h"
#include "platform/control/selection_bounds.h"
#include "platform/control/tag_marks.h"
#include "platform/control/text_habits.h"
#include "platform/control/typing_help.h"
#include "platform/control/xml_styling.h"

#include <QHash>
#include <QPoint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

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
    // Editors with the same library share keys and macros; without one it has its own.
    explicit CodeEditor(QWidget *parent = nullptr, std::shared_ptr<EditorLibrary> library = {});

    QByteArray text() const override;
    QByteArray textInPlace() const override;
    quint64 revision() const override { return revision_; }
    void loadText(const QByteArray &utf8) override;
    void replaceText(const QByteArray &utf8) override;
    void replaceDocument(const QByteArray &utf8, int number) override;
    void tellCrossing(Crossed told) override { crossed_ = std::move(told); }
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
    // One step of undo; line ends become the document's own; the caret ends up behind the new text. Of a
    // rectangle the new text takes the first corner.
    void replaceSelection(const QByteArray &utf8) override;
    void setLanguage(Language language) override;
    void showBytes(char32_t first) override;
    void giveFocus() override;

    Language language() const { return language_; }
    int lineCount() const;

    const EditorProperties &properties() const { return properties_; }
    // Shows the text by these from now on.
    void setProperties(const EditorProperties &properties);
    // The user has chosen these: as above, and propertiesChanged.
    void changeProperties(const EditorProperties &properties);
    // The user has chosen other keys in the library: propertiesChanged.
    void noticeShortcutChange();

    bool lineNumbersShown() const { return properties_.lineNumbering; }
    void setLineNumbersShown(bool shown);

    // The keys of this editor; they work while it has the focus.
    ShortcutTable &shortcuts() { return library_->shortcuts; }
    const std::shared_ptr<EditorLibrary> &library() const { return library_; }

    // What is copied or dragged from here is offered in this format too, without content of its own: so
    // others can tell where the text is from. None when empty.
    void setCopyMark(const QString &format) { copyMark_ = format; }

    // Does what a user could do with a key, as often as the step says, or the pending count of repetitions;
    // false when nothing came of it.
    bool perform(const Step &step);

    // How often the next step is to be done; 1 when no count is pending. Escape takes the count back.
    int repeatCount() const { return repeatCount_; }
    void setRepeatCount(int count);

    MacroPlayer &player() { return player_; }
    TypingHelp &typingHelp() { return typingHelp_; }
    XmlStyling &xmlStyling() { return xmlStyling_; }

    // Until as many calls of endQuiet nothing is drawn or told, and what is done counts as part of one step.
    void beginQuiet();
    void endQuiet();
    bool isQuiet() const { return quiet_ > 0; }

    // Lets somebody carry out a command that is no editing: find, macros, properties. The handler says
    // whether it could. A command without a handler is refused.
    void setServiceHandler(int command, const std::function<bool()> &handler);

    // The engine itself, for commands and for what stands beside the editor.
    long send(unsigned message, unsigned long first = 0, long second = 0) const;

    // Part of the text; the selection, as one range even when it is a rectangle.
    QByteArray bytes(const ByteRange &range) const;
    ByteRange selection() const;
    // What is selected: of a rectangle its lines, with line ends between them, and not what stands beside it.
    QByteArray selectedText() const;
    long selectedCharacters() const;
    // Replaces the part that differs as one step of undo; false when there is no difference.
    bool replaceRange(const ByteRange &range, const QByteArray &utf8);
    const TextHabits &habits() const { return habits_; }
    const InsertedRun &insertedRun() const { return inserted_; }
    // Within a step of undo that changes several places: where the caret was before it, or is after it.
    // Called for both; undo and redo then lead there, and leave the view alone while the caret stands at the
    // other.
    void markStepCaret(long position);
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
    // The user, through this editor, has chosen other colours, styles, options or keys.
    void propertiesChanged();
    // Face and colours were put on anew; who colours the text differently does so now.
    void dressed();
    // Something was done to or in the text, by a key, a menu or execute; not for each step of a macro.
    void stepped(const control::Step &step);
    void repeatCountChanged(int count);
    // A command that is carried out elsewhere was called; emitted before its handler is asked.
    void serviceRequested(int command);
    // What the user should know about the text, for the status bar.
    void noted(const QString &sentence);

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    QMimeData *toMimeData(const QByteArray &text, bool rectangular) const override;

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
    void travel(unsigned message);
    void settle();
    void settleSoon();
    void noticeContainer(int token, bool undone);
    void tellCrossings();
    Told state() const;
    void takeHabits(QByteArrayView text);
    void watchText(bool watched);
    bool claims(const QKeyEvent &event) const;
    bool clearsRepeatCount(const QKeyEvent &event) const;
    bool carryOut(const Step &step);
    bool carryOutOnce(const Step &step);
    bool run(int command);
    void type(const QByteArray &utf8);
    bool typesPlainly() const;
    void typeInLongLine(const QByteArray &utf8);
    void commitComposed(QInputMethodEvent &event, const Step &step);
    int takeRepeatCount();
    bool callService(int command);
    void setUpLook();
    void aboutToPaint();
    void dress();
    void applyOptions();
    void tellLine(int position);
    void readyFolds(const QMouseEvent &event);

    // Where the caret was when the step that is undone or redone ended, and where it is to go.
    struct StepCaret
    {
        long left = 0;
        long wanted = 0;
    };

    quint64 revision_ = 0;
    Told told_;
    std::optional<StepCaret> stepCaret_;
    Crossed crossed_;
    std::vector<std::pair<int, bool>> crossings_; // that are not told yet
    bool settlingSoon_ = false;
    bool highlighted_ = false;
    TagMarks tagMarks_;
    LineNumbers lineNumbers_;
    SelectionBounds selectionBounds_;
    EditorProperties properties_;
    TypingHelp typingHelp_;
    XmlStyling xmlStyling_;
    int steps_ = 0; // how deep steps within steps go
    int quiet_ = 0;
    int repeatCount_ = 1;
    bool composing_ = false; // the text holds what an input method has not committed yet
    MacroPlayer player_;
    int fittedLines_ = 0;
    Language language_ = Language::Plain;
    char32_t firstByteShown_ = 0;
    TextHabits habits_;
    InsertedRun inserted_;
    mutable ColumnCount columns_;
    std::shared_ptr<EditorLibrary> library_;
    QString copyMark_;
    QKeySequence firstStroke_;
    QHash<int, std::function<bool()>> services_;
    AccessibleText accessible_;
};

} // namespace control
