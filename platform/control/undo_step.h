// What is done to a text while one of these lives is undone together. It ends with its scope, or earlier when
// told so, and never twice: the engine gives up the whole program over an end without a beginning.
#pragma once

namespace control {

class CodeEditor;

class UndoStep
{
public:
    // Steps within a step become part of it. The editor outlives it.
    explicit UndoStep(const CodeEditor &editor);
    ~UndoStep() { end(); }
    UndoStep(UndoStep &&other) noexcept;
    UndoStep &operator=(UndoStep &&other) noexcept;
    UndoStep(const UndoStep &) = delete;
    UndoStep &operator=(const UndoStep &) = delete;

    // Nothing happens when it has ended already.
    void end();

private:
    const CodeEditor *editor_;
};

} // namespace control
