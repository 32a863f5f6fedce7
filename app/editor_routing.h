// Carries the editor's commands from menus and buttons to the code editor, and its state back to them.
#pragma once

#include "editor/line_history.h"
#include "platform/control/editor_control.h"

#include <QString>
#include <functional>
#include <optional>

namespace app {

class CommandSet;
struct Command;

class EditorRouting
{
public:
    // note tells the user what a command could not do. All three outlive this.
    EditorRouting(control::EditorControl &editor, CommandSet &commands,
                  std::function<void(const QString &)> note);

    // XML Mode is entered: the line history starts anew where the caret is.
    void enter();

    // The caret or the selection moved.
    void caretMoved();

    // The text was edited: what was marked as an error may be none any more.
    void textEdited();

    // Enables each command that the editor can perform now, and disables the others.
    void refresh();

    void NextLine();
    void PrevLine();

private:
    void bindNumbered();
    void bindDirect();
    void bindLineHistory();
    void execute(const Command &row);
    void toggleWhiteSpace();
    void goTo(editor::CaretPosition position);
    void refreshLineHistory();
    editor::CaretPosition caret() const;

    control::EditorControl &editor_;
    CommandSet &commands_;
    std::function<void(const QString &)> note_;
    editor::LineHistory history_;
    std::optional<editor::CaretPosition> arrival_; // where the last step led, not a place the user chose
};

} // namespace app
