#include "platform/control/typing_actions.h"

#include "platform/control/closing_tag.h"
#include "platform/control/code_editor.h"
#include "platform/control/undo_step.h"

namespace control {

namespace {

bool toggle(CodeEditor &editor, bool EditorProperties::*option)
{
    EditorProperties properties = editor.properties();
    properties.*option = !(properties.*option);
    editor.changeProperties(properties);
    return true;
}

} // namespace

bool completeName(CodeEditor &editor) { return editor.typingHelp().offerNames(); }

bool closeElement(CodeEditor &editor)
{
    if (editor.language() == Language::Plain)
        return false;
    const QByteArray tag = closingTagAt(editor, editor.selection().start);
    if (tag.isEmpty()) {
        Q_EMIT editor.noted(CodeEditor::tr("No element is open here."));
        return false;
    }
    const UndoStep step(editor);
    editor.replaceSelection(tag);
    if (editor.properties().autoIndent)
        alignClosingTag(editor);
    return true;
}

bool toggleTextDragging(CodeEditor &editor) { return toggle(editor, &EditorProperties::dragText); }

bool toggleNameOffering(CodeEditor &editor) { return toggle(editor, &EditorProperties::offerNames); }

bool toggleCloseOnSlash(CodeEditor &editor) { return toggle(editor, &EditorProperties::closeOnSlash); }

bool toggleCloseOnBracket(CodeEditor &editor) { return toggle(editor, &EditorProperties::closeOnBracket); }

bool toggleRenaming(CodeEditor &editor) { return toggle(editor, &EditorProperties::renameBoth); }

bool toggleAutoIndent(CodeEditor &editor) { return toggle(editor, &EditorProperties::autoIndent); }

} // namespace control
