#include "platform/control/undo_step.h"

#include "platform/control/code_editor.h"

#include <utility>

namespace control {

UndoStep::UndoStep(const CodeEditor &editor) : editor_(&editor)
{
    editor.send(QsciScintillaBase::SCI_BEGINUNDOACTION);
}

UndoStep::UndoStep(UndoStep &&other) noexcept : editor_(std::exchange(other.editor_, nullptr)) { }

UndoStep &UndoStep::operator=(UndoStep &&other) noexcept
{
    if (this != &other) {
        end();
        editor_ = std::exchange(other.editor_, nullptr);
    }
    return *this;
}

void UndoStep::end()
{
    if (const CodeEditor *editor = std::exchange(editor_, nullptr))
        editor->send(QsciScintillaBase::SCI_ENDUNDOACTION);
}

} // namespace control
