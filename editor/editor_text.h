// The text of a code editor where it stands, without a copy.
#pragma once

#include "platform/control/code_editor.h"
#include "platform/control/text_search.h"

namespace editor {

// Valid until the text changes.
inline QByteArrayView textInPlace(const control::CodeEditor &editor) { return editor.textInPlace(); }

inline control::TextMatch selectionOf(const control::CodeEditor &editor)
{
    const control::ByteRange selected = editor.selection();
    return {selected.start, selected.end};
}

} // namespace editor
