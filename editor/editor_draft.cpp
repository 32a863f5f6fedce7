#include "editor/editor_draft.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"

#include <algorithm>

namespace editor {

namespace {

bool sameKeys(const control::ShortcutTable &one, const control::ShortcutTable &other)
{
    const auto commands = control::editorCommands();
    return std::all_of(commands.begin(), commands.end(), [&](const control::EditorCommand &command) {
        return one.shortcuts(command.number) == other.shortcuts(command.number);
    });
}

} // namespace

EditorDraft draftOf(const control::CodeEditor &editor)
{
    return {editor.properties(), editor.library()->shortcuts, editor.language()};
}

bool differs(const EditorDraft &draft, const control::CodeEditor &editor)
{
    return draft.properties != editor.properties() || draft.language != editor.language()
        || !sameKeys(draft.shortcuts, editor.library()->shortcuts);
}

void apply(const EditorDraft &draft, control::CodeEditor &editor)
{
    const bool otherKeys = !sameKeys(draft.shortcuts, editor.library()->shortcuts);
    editor.setLanguage(draft.language);
    if (otherKeys)
        editor.library()->shortcuts = draft.shortcuts;
    if (draft.properties != editor.properties())
        editor.changeProperties(draft.properties);
    else if (otherKeys)
        editor.noticeShortcutChange();
}

} // namespace editor
