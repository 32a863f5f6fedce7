// The selection of a code editor, as the searches take it.
#pragma once

#include "platform/control/code_editor.h"
#include "platform/control/text_search.h"

namespace editor {

inline control::TextMatch selectionOf(const control::CodeEditor &editor)
{
    const control::ByteRange selected = editor.selection();
    return {selected.start, selected.end};
}

} // namespace editor
