// The numbered commands of the editor, 100 to 241, as one table. CodeEditor::execute is its interpreter.
#pragma once

#include <span>

namespace control {

class CodeEditor;

inline constexpr int firstCommand = 100;
inline constexpr int lastCommand = 241;

struct EditorCommand
{
    // Carries the command out; false when there was nothing to act on.
    using Action = bool (*)(CodeEditor &editor);

    int number;
    // Shown to the user.
    const char *name;
    // Built-in shortcuts in portable notation, separated by "; ".
    const char *keys;
    // The editing engine's own message, or 0.
    unsigned message;
    // What is done instead of a message, or null.
    Action action;

    // Carried out by whoever registered with the editor for the number.
    bool isService() const { return message == 0 && action == nullptr; }
};

// In the order of their numbers, without gaps.
std::span<const EditorCommand> editorCommands();

// Null when there is none of that number.
const EditorCommand *findEditorCommand(int number);

} // namespace control
