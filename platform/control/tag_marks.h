// Marks the tag at the caret and its partner in the text of an editor.
#pragma once

#include "platform/control/matching_tag.h"

namespace control {

class CodeEditor;

// The markup at a position of the editor's text and its partner, as positions of the whole text.
std::optional<TagMatch> tagMatchAt(const CodeEditor &editor, long position);
// The same, but where no partner is near it is looked for in the whole text, under the busy pointer.
std::optional<TagMatch> tagMatchAnywhere(const CodeEditor &editor, long position);

class TagMarks
{
public:
    // Marks the names of both tags when the caret is on one of them, and the brackets of the markup that the
    // caret stands just before or behind. Takes away the marks made before.
    void update(CodeEditor &editor);

private:
    void clear(CodeEditor &editor);

    bool marked_ = false;
};

} // namespace control
